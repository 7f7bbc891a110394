#include "axis/AxisRange.h"
#include "support/Table.h"

#include <QtTest>

using namespace graph;

namespace {

// Full and visible range, such as "0 100 30 40".
QString text(const AxisRange &range)
{
    QStringList numbers;
    for (const double value : {range.minValue(), range.maxValue(), range.minVisible(), range.maxVisible()})
        numbers.append(QString::number(value));
    return numbers.join(' ');
}

// The visible edges are written first, because moving the full range does not touch them without a span.
AxisRange rangeOf(double minValue, double maxValue, double minVisible, double maxVisible, double span = 0.0)
{
    AxisRange range;
    range.setMinVisible(minVisible);
    range.setMaxVisible(maxVisible);
    range.moveMinValue(minValue);
    range.moveMaxValue(maxValue);
    range.setSpan(span);
    return range;
}

} // namespace

class tst_axisrange : public QObject
{
    Q_OBJECT

private slots:
    void moves_data();
    void moves();
    void staysInside();
    void bounds();
    void logarithmicBounds();
};

void tst_axisrange::moves_data()
{
    // end: that moves: maxValue instead of minValue
    columns<double, double, double, bool, double, QString>(
        {"span", "lowest", "highest", "end", "to", "range"});
    const auto row = [](const char *name, double span, double lowest, double highest, bool end, double to,
                        const char *range) {
        QTest::newRow(name) << span << lowest << highest << end << to << QString(range);
    };
    row("free", 0, 0, 10, false, 5, "5 100 0 10");
    row("span at the begin", 10, 0, 10, false, 5, "5 100 5 15");
    row("span at the begin, little room", 10, 0, 10, false, 95, "95 100 95 100");
    row("span at the begin, beyond the end", 10, 0, 10, false, 200, "200 100 200 210");
    row("span in the middle", 10, 30, 40, false, 5, "5 100 30 40");
    row("span at the end", 10, 90, 100, true, 120, "0 120 110 120");
    row("span at the end, little room", 10, 90, 100, true, 5, "0 5 0 5");
    row("span at the end, before the begin", 10, 90, 100, true, -50, "0 -50 -60 -50");
    row("span elsewhere", 10, 0, 10, true, 120, "0 120 0 10");
}

void tst_axisrange::moves()
{
    QFETCH(double, span);
    QFETCH(double, lowest);
    QFETCH(double, highest);
    QFETCH(bool, end);
    QFETCH(double, to);
    AxisRange range = rangeOf(0, 100, lowest, highest, span);
    const bool moved = end ? range.moveMaxValue(to) : range.moveMinValue(to);
    QTEST(text(range), "range");
    QCOMPARE(moved, range.minVisible() != lowest || range.maxVisible() != highest);
}

void tst_axisrange::staysInside()
{
    const auto inside = [](double lowest, double highest) {
        const AxisRange::Edges edges = rangeOf(0, 100, lowest, highest).visibleInside();
        return qMakePair(edges.lowest, edges.highest);
    };
    QCOMPARE(inside(30, 40), qMakePair(30.0, 40.0));
    QCOMPARE(inside(95, 105), qMakePair(90.0, 100.0));
    QCOMPARE(inside(-5, 5), qMakePair(0.0, 10.0));
    QCOMPARE(inside(50, 250), qMakePair(0.0, 100.0));
    QCOMPARE(inside(-200, 50), qMakePair(0.0, 100.0));
}

void tst_axisrange::bounds()
{
    AxisRange range = rangeOf(100, 200, 0, 0);
    QVERIFY(range.setLowerBound(0.25));
    QVERIFY(range.setUpperBound(0.5));
    QVERIFY(!range.setUpperBound(0.5));
    QCOMPARE(text(range), QString("100 200 125 150"));
    QCOMPARE(range.fullScale().fraction(125.0), 0.25);
    QCOMPARE(range.mirrored(125.0), 175.0);
    range.setScalable(false);
    QVERIFY(range.setLowerBound(range.lowerBound()));
    QVERIFY(range.setUpperBound(range.upperBound()));
    QVERIFY(!range.setLowerBound(0.7));
    QCOMPARE(text(range), QString("100 200 100 200"));
}

void tst_axisrange::logarithmicBounds()
{
    AxisRange range = rangeOf(1, 1e4, 0, 0);
    range.setScaleKind(graph::ScaleKind::Logarithmic);
    range.setLowerBound(0.25);
    range.setUpperBound(1.0);
    QVERIFY(std::abs(range.minVisible() - 10.0) < 1e-12);
    QCOMPARE(range.maxVisible() - 1e4, 0.0); // exactly
    QVERIFY(std::abs(range.fullScale().fraction(1000.0) - 0.75) < 1e-15);
    QVERIFY(std::abs(range.mirrored(1000.0) - 10.0) < 1e-12);
    range.moveMinValue(0.0);
    range.setScalable(false);
    range.setLowerBound(0.5);
    QCOMPARE(range.minVisible(), 10.0);
    QCOMPARE(range.minValue(), 0.0);
}

QTEST_APPLESS_MAIN(tst_axisrange)
#include "tst_axisrange.moc"
