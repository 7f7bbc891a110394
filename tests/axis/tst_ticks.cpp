#include "axis/AxisBench.h"
#include "axis/TickSearch.h"
#include "axis/ValueAxis.h"
#include "support/Table.h"

#include <QFontMetrics>
#include <QRandomGenerator>
#include <QtTest>

#include <cmath>
#include <limits>

namespace {

const double inf = std::numeric_limits<double>::infinity();
const double notANumber = std::numeric_limits<double>::quiet_NaN();
const QList<qreal> usualMantissas{1.0, 1.5, 2.0, 2.5, 5.0, 10.0};

} // namespace

class tst_ticks : public QObject
{
    Q_OBJECT

private slots:
    void lists_data();
    void lists();
    void fixedListKeepsItsOrder();
    void searchesBracketTheSpacing();
    void degenerateInput();
    void counts();
    void countsOfPixels();
    void changesRebuild();
};

void tst_ticks::lists_data()
{
    columns<int, int, double, double, double, QList<qreal>>(
        {"kind", "count", "lowest", "highest", "custom", "expected"});

    const int decimal = ValueAxis::ScaledDecimal;
    const int binary = ValueAxis::ScaledBinary;
    QTest::newRow("fifths") << decimal << 5 << 0.0 << 1.0 << 0.0 << QList<qreal>{0, 0.2, 0.4, 0.6, 0.8, 1.0};
    QTest::newRow("one and a half") << decimal << 5 << 0.0 << 7.0 << 0.0 << QList<qreal>{0, 1.5, 3, 4.5, 6};
    QTest::newRow("16 of 100") << binary << 5 << 0.0 << 100.0 << 0.0
                               << QList<qreal>{0, 16, 32, 48, 64, 80, 96};
    QTest::newRow("32 of 100") << binary << 3 << 0.0 << 100.0 << 0.0 << QList<qreal>{0, 32, 64, 96};
    QTest::newRow("custom") << decimal << 5 << 0.1 << 1.0 << 0.25 << QList<qreal>{0.25, 0.5, 0.75, 1.0};
    QTest::newRow("negative") << decimal << 4 << -10.0 << -2.0 << 0.0 << QList<qreal>{-10, -8, -6, -4, -2};
    QTest::newRow("a zero without a sign") << decimal << 2 << -0.5 << 3.5 << 2.0 << QList<qreal>{0, 2};
    QTest::newRow("gigahertz in fifths of hertz")
        << decimal << 5 << 2.4e9 << 2.4e9 + 0.5 << 0.2 << QList<qreal>{2.4e9, 2.4e9 + 0.2, 2.4e9 + 0.4};
}

void tst_ticks::lists()
{
    QFETCH(int, kind);
    QFETCH(int, count);
    QFETCH(double, lowest);
    QFETCH(double, highest);
    QFETCH(double, custom);
    QFETCH(QList<qreal>, expected);
    ValueAxis axis;
    axis.setTickInterval(ValueAxis::TickInterval(kind));
    axis.setCustomInterval(custom);
    axis.setMinVisible(lowest);
    axis.setMaxVisible(highest);
    const QList<qreal> built = axis.buildTicks(count);
    QCOMPARE(built.size(), expected.size());
    for (int i = 0; i < built.size(); ++i) {
        QVERIFY2(std::abs(built.at(i) - expected.at(i)) <= 1e-15 * std::max(1.0, std::abs(expected.at(i))),
                 qPrintable(QString::number(built.at(i), 'g', 17)));
        QVERIFY(!(built.at(i) == 0.0 && std::signbit(built.at(i))));
    }
}

void tst_ticks::fixedListKeepsItsOrder()
{
    ValueAxis axis;
    axis.setTickInterval(ValueAxis::FixedTicks);
    axis.setTicks({3, 1, notANumber, 2, 2});
    axis.setMinVisible(1);
    axis.setMaxVisible(2.5);
    QCOMPARE(axis.buildTicks(5), (QList<qreal>{1, 2, 2}));
    axis.setMaxValue(10);
    axis.setMinVisible(2);
    axis.setMaxVisible(5);
    axis.setTicks({2, 5, 8});
    axis.setRangeOrder(ValueAxis::Decreasing);
    QCOMPARE(axis.buildTicks(5), (QList<qreal>{5, 8}));
}

void tst_ticks::searchesBracketTheSpacing()
{
    QRandomGenerator random(4);
    for (int i = 0; i < 20000; ++i) {
        const double range = std::pow(10.0, random.generateDouble() * 40.0 - 20.0);
        const int count = random.bounded(1, 60);
        // No mantissa is between the exact spacing and the one that is found.
        const double decimal = graph::decimalInterval(range, count, usualMantissas);
        const double magnitude = std::pow(10.0, std::floor(std::log10(decimal * (1.0 + 1e-12))));
        int which = 0;
        while (which < 5 && std::abs(usualMantissas[which] * magnitude - decimal) > 1e-12 * decimal)
            ++which;
        const double smaller = which == 0 ? 0.5 : usualMantissas[which - 1];
        QVERIFY2(which < 5 && smaller * magnitude < range / count * (1.0 + 1e-12) &&
                     decimal > range / count * (1.0 - 1e-12),
                 qPrintable(QString("%1 / %2").arg(range).arg(count)));

        const double found = graph::binaryInterval(range, count);
        int exponent = 0;
        QCOMPARE(std::frexp(found, &exponent), 0.5);
        // The lower power of the two around the exact spacing, unless it gives more than one tick too many.
        const double lower = found > range / count ? found / 2.0 : found;
        QVERIFY(lower <= range / count && 2.0 * lower > range / count);
        QCOMPARE(found > lower, std::round(range / lower) > count + 1);
    }
}

void tst_ticks::degenerateInput()
{
    for (const double range : {0.0, notANumber, inf, 5e-324}) {
        QVERIFY(!(graph::decimalInterval(range, 5, usualMantissas) > 0.0));
        QVERIFY(range == 5e-324 || graph::binaryInterval(range, 5) == 0.0);
    }
    QCOMPARE(graph::decimalInterval(1.0, 0, usualMantissas), 0.0);
    QCOMPARE(graph::decimalInterval(10.0, 5, {}), 0.0);
    QCOMPARE(graph::decimalInterval(10.0, 5, {5.0, 1.0}), 5.0);
    QCOMPARE(graph::decimalInterval(-45.0, 5, {1.0, 3.0}), 3.0);
    QCOMPARE(graph::binaryInterval(1.0, 0), 0.0);
    QVERIFY(graph::binaryInterval(1.0, std::numeric_limits<int>::max()) > 0.0);
    QCOMPARE(graph::spacedTicks(0.0, inf, 1.0), QList<qreal>());
    QCOMPARE(graph::spacedTicks(notANumber, 1.0, 1.0), QList<qreal>());
    QCOMPARE(graph::spacedTicks(1.0, 0.0, 0.1), QList<qreal>());
    QCOMPARE(graph::spacedTicks(1e17, 1e17 + 64, 1.0).size(), 1);
    QCOMPARE(graph::spacedTicks(0.0, 1e9, 1.0).size(), graph::tickLimit);

    ValueAxis axis;
    for (const double custom : {-1.0, notANumber}) {
        axis.setCustomInterval(custom);
        QTest::ignoreMessage(
            QtDebugMsg, QRegularExpression("ValueAxis\\(0x[0-9a-f]+\\) buildTicks\\(\\) interval = 0!!!"));
        QCOMPARE(axis.ticks(5), QList<qreal>());
    }
    axis.setCustomInterval(1e-7);
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression("buildTicks\\(\\) ends after"));
    QCOMPARE(axis.ticks(5).size(), graph::tickLimit);
}

void tst_ticks::counts()
{
    QCOMPARE(ValueAxis::computeTickCount(480, 45, 0.5), 5);
    QCOMPARE(ValueAxis::computeTickCount(20, 45, 0.5), 1);
    QCOMPARE(ValueAxis::computeTickCount(0, 45, 0.5), 0);
    QVERIFY(ValueAxis::computeTickCount(-480, 45, 0.5) <= 0);
    QCOMPARE(ValueAxis::computeTickCount(notANumber, 45, 0.5), 0);
    QCOMPARE(ValueAxis::computeTickCount(1e300, 1e-300, 0.5), 0);
    QCOMPARE(ValueAxis::computeTickCount(1e30, 1, 0.5), graph::tickLimit);
    QTest::ignoreMessage(QtWarningMsg, "computeTickCount - labelSize is -2.5, expected value > 0");
    QCOMPARE(ValueAxis::computeTickCount(480, -2.5, 0.5), 5);
}

void tst_ticks::countsOfPixels()
{
    ValueAxis axis;
    axis.setNumTicks(7);
    const int height = QFontMetrics(axis.labelFont()).height();
    const int width = 5 * QFontMetrics(axis.labelFont()).boundingRect('0').width();
    QVERIFY(height != width);
    QCOMPARE(axis.computeTickCountH(100.0 * width), 7);
    QCOMPARE(axis.computeTickCountV(100.0 * height), 7);
    axis.setTickInterval(ValueAxis::DisplayDynamic);
    QCOMPARE(axis.computeTickCountH(10.1 * width), 5);
    QCOMPARE(axis.computeTickCountV(10.1 * height), 5);
    // Each axis counts along itself.
    for (const Qt::Alignment alignment : {Qt::AlignBottom, Qt::AlignLeft}) {
        axis.setAlignment(alignment);
        const QSizeF area = alignment == Qt::AlignLeft ? QSizeF(20.0, 1000.0) : QSizeF(1000.0, 20.0);
        const auto draw = [&](QPainter *painter) { axis.paintLines(painter, QRectF(QPointF(), area)); };
        QVERIFY(PaintRecorder(draw).lines.size() > 5);
    }
}

void tst_ticks::changesRebuild()
{
    const struct
    {
        const char *name;
        void (*change)(ValueAxis &);
    } cases[] = {
        {"lower bound", [](ValueAxis &axis) { axis.setLowerBound(0.5); }},
        {"upper bound", [](ValueAxis &axis) { axis.setUpperBound(0.5); }},
        {"begin", [](ValueAxis &axis) { axis.setMinValue(-20.0); }},
        {"end", [](ValueAxis &axis) { axis.setMaxValue(20.0); }},
        {"visible begin", [](ValueAxis &axis) { axis.setMinVisible(-1.0); }},
        {"visible end", [](ValueAxis &axis) { axis.setMaxVisible(9.0); }},
        {"mantissas", [](ValueAxis &axis) { axis.setTicks({3.0}); }},
        {"kind", [](ValueAxis &axis) { axis.setTickInterval(ValueAxis::ScaledBinary); }},
        {"spacing", [](ValueAxis &axis) { axis.setCustomInterval(0.7); }},
        {"order", [](ValueAxis &axis) { axis.setRangeOrder(ValueAxis::Decreasing); }},
        {"number", [](ValueAxis &axis) { axis.setNumTicks(11); }},
        {"unit", [](ValueAxis &axis) { axis.setFormatter(getFormatter("FeetFormatter")); }},
        // These may move ticks some day.
        {"style", [](ValueAxis &axis) { axis.setAxisStyle(ValueAxis::TicksOnly); }},
        {"ratio", [](ValueAxis &axis) { axis.setDynamicTicksRatio(0.3); }},
        {"baseline", [](ValueAxis &axis) { axis.setBaseline(-3.0); }},
    };
    for (const auto &test : cases) {
        ValueAxis axis;
        axis.setMaxValue(10.0);
        axis.setMaxVisible(7.0);
        const QList<qreal> before = axis.ticks(0);
        QCOMPARE(before, axis.buildTicks(5));
        QVERIFY(!axis.getTicksDirty());
        test.change(axis);
        QVERIFY2(axis.getTicksDirty(), test.name);
        QVERIFY2((axis.ticks(0) != before) == (&test < std::end(cases) - 3), test.name);
        QCOMPARE(axis.ticks(0), axis.buildTicks(axis.numTicks()));
        QCOMPARE(axis.ticks(10), axis.buildTicks(10));
    }
}

QTEST_MAIN(tst_ticks)
#include "tst_ticks.moc"
