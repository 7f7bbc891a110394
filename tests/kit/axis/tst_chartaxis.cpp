#include "axis/AxisBench.h"
#include "cursors/GraphCursor.h"
#include "data/PlotPoints.h"
#include "data/PlotSeries.h"
#include "kit/axis/ChartAxis.h"
#include "kit/axis/UnitText.h"
#include "painters/CrossPainter.h"
#include "painters/SegmentPainter.h"
#include "plots/ContainerPlot.h"
#include "plots/GraphPlot.h"
#include "view/base/XYScale.h"
#include "support/Table.h"

#include <QGlyphRun>
#include <QTextLayout>
#include <QtTest>

#include <cmath>

using graph::ChartAxis;

namespace {

// What an axis paints on a plot area of 501 x 201 pixels.
QStringList textsOf(ChartAxis &axis, double width = 501.0)
{
    const QRectF area(100, 100, width, 201);
    const PaintRecorder recorder([&](QPainter *painter) { axis.paintLabels(painter, area, {area, {}}); });
    QStringList texts;
    for (const PaintRecorder::Text &text : recorder.texts)
        texts.append(text.text);
    return texts;
}

} // namespace

class tst_chartaxis : public QObject
{
    Q_OBJECT

private slots:
    void zoomsInTheLogarithm();
    void everythingOnDecades_data();
    void everythingOnDecades();
    void reversed();
    void badLogarithmicRange_data();
    void badLogarithmicRange();
    void title();
    void rightToLeft();
    void labelsAtTheEdges();
    void fixedTicks();
    void time();
    void valueText_data();
    void valueText();
    void besideEachOther();
    void followsData();
};

void tst_chartaxis::zoomsInTheLogarithm()
{
    ChartAxis axis;
    ZoomRect zoom;
    axis.setScale(ChartAxis::Logarithmic);
    axis.range(1.0, 1e4);
    axis.setZoomRect(&zoom);
    zoom.setRight(0.75);
    zoom.setLeft(0.25);
    QCOMPARE(axis.minVisible(), 10.0);
    QCOMPARE(axis.maxVisible(), 1000.0);
    axis.setMinVisible(100.0);
    QCOMPARE(zoom.left(), 0.5);
    axis.setScale(ChartAxis::Linear);
    QCOMPARE(axis.minVisible(), 1.0 + 0.5 * 9999.0);
}

// A decade is 100 pixels each way.
void tst_chartaxis::everythingOnDecades_data()
{
    QTest::addColumn<bool>("isReversed");
    QTest::newRow("rising") << false;
    QTest::newRow("falling") << true;
}

void tst_chartaxis::everythingOnDecades()
{
    QFETCH(bool, isReversed);
    const auto column = [&](int rising) { return isReversed ? 400 - rising : rising; };
    ChartAxis x;
    ChartAxis y;
    y.setAlignment(Qt::AlignLeft);
    for (ChartAxis *axis : {&x, &y})
        axis->setScale(ChartAxis::Logarithmic);
    x.range(isReversed ? 1e4 : 1.0, isReversed ? 1.0 : 1e4);
    y.range(1.0, 1e4);
    PlotPoints points;
    points.setXData({1.0, 10.0, 100.0, 1000.0, 2000.0, 1e4});
    points.setYData({1.0, 10.0, 1000.0, 0.0, 20.0, 100.0});
    GraphPlot plot;
    plot.setAxisX(&x);
    plot.setAxisY(&y);
    plot.setPlotData(&points);
    plot.setPlotStyle(GraphPlot::ScatterPlot);
    plot.setSize(QSizeF(401, 401));
    QCOMPARE(plot.checkClickPosition(column(200), 100, 2), 2);
    QCOMPARE(plot.checkClickPosition(column(300), 400, 2), -1); // 0 has no place

    GraphCursor cursor;
    cursor.setSize(QSizeF(401, 401));
    cursor.setPlots({&plot});
    cursor.setPosOnScreen(column(120));
    QCOMPARE(cursor.posIndex(), 1);
    QCOMPARE(cursor.posOnScreen(), column(100));
    QCOMPARE(cursor.position(), isReversed ? 0.75 : 0.25);
    QCOMPARE(cursor.yPositions(), QList<qreal>{300.0});
    if (isReversed)
        cursor.setPeakLeft();
    else
        cursor.setPeakRight();
    QCOMPARE(cursor.posIndex(), 2);

    // From corner to corner: straight on the screen.
    ContainerPlot container;
    container.setRenderTarget(QQuickPaintedItem::Image);
    container.setAxisX(&x);
    container.setAxisY(&y);
    container.setSize(QSizeF(401, 201));
    SegmentPainter segment(&container);
    segment.setPoint1X(1e-2);
    segment.setPoint1Y(1e-2);
    segment.setPoint2X(1e6);
    segment.setPoint2Y(1e6);
    CrossPainter cross(&container);
    cross.setPoint1X(100.0);
    cross.setPoint1Y(10.0);
    cross.setCrossSize(0);
    const auto lines = PaintRecorder([&](QPainter *painter) { container.paint(painter); }).lines;
    QCOMPARE(lines.value(0), QLineF(column(0), 200, column(400), 0));
    QCOMPARE(lines.value(1).p1(), QPointF(column(200), 150));

    // At the upper half of the extent a click is still counted from the whole extent's corner.
    ZoomRect zoom;
    x.setZoomRect(&zoom);
    y.setZoomRect(&zoom);
    zoom.setLeft(0.5);
    QCOMPARE(plot.checkClickPosition(isReversed ? 600 : 800, isReversed ? 300 : 200, 2), isReversed ? 1 : 5);
}

void tst_chartaxis::reversed()
{
    ChartAxis x;
    ChartAxis y;
    y.setAlignment(Qt::AlignLeft);
    x.range(100.0, 0.0);
    y.range(10.0, 0.0);
    PlotSeries series;
    QVector<double> values(1001, 1.0);
    values[250] = 9.0; // at 25, three quarters from the left
    series.setXInterval(0.1);
    series.setYData(values);
    GraphPlot plot;
    plot.setAxisX(&x);
    plot.setAxisY(&y);
    plot.setPlotData(&series);
    plot.setSize(QSizeF(101, 101));
    plot.setRenderTarget(QQuickPaintedItem::Image);
    plot.setPlotStyle(GraphPlot::LinePlot);
    plot.setMinLineWidth(1);
    QTRY_VERIFY(plot.isValid());
    QImage image(101, 101, QImage::Format_RGB32);
    image.fill(Qt::white);
    {
        QPainter painter(&image);
        plot.paint(&painter);
    }
    // Great values are below.
    QCOMPARE(image.pixelColor(75, 80), QColor(Qt::black));
    QCOMPARE(image.pixelColor(25, 80), QColor(Qt::white));
    QCOMPARE(image.pixelColor(30, 10), QColor(Qt::black));
    QCOMPARE(plot.mapFromItemX(75), 25.0);
    const QStringList texts = textsOf(x);
    QVERIFY(texts.contains("0") && texts.contains("100"));
    x.setCustomInterval(-1e308);
    QCOMPARE(textsOf(x), texts);
    x.setCustomInterval(40.0);
    QCOMPARE(textsOf(x), QStringList({"80", "40", "0"}));
}

void tst_chartaxis::badLogarithmicRange_data()
{
    columns<double, double, QString>({"from", "to", "shown"});
    QTest::newRow("touches") << 0.0 << 100.0 << "0.1 to 100";
    QTest::newRow("crosses") << -10.0 << 100.0 << "0.1 to 100";
    QTest::newRow("reversed") << 100.0 << 0.0 << "100 to 0.1";
    QTest::newRow("below") << -100.0 << -1.0 << "1 to 10";
}

void tst_chartaxis::badLogarithmicRange()
{
    QFETCH(double, from);
    QFETCH(double, to);
    QFETCH(QString, shown);
    ChartAxis axis;
    axis.setObjectName("level");
    axis.setScale(ChartAxis::Logarithmic);
    QTest::ignoreMessage(
        QtWarningMsg,
        qPrintable(
            QStringLiteral("ChartAxis \"level\" is logarithmic and cannot show the range %1 to %2, only %3: "
                           "write a range above 0, or scale: ChartAxis.Linear.")
                .arg(from)
                .arg(to)
                .arg(shown)));
    axis.range(from, to);
    QSignalSpy changed(&axis, &ValueAxis::axisChanged);
    QVERIFY(changed.wait());
    QCOMPARE(QStringLiteral("%1 to %2").arg(axis.minVisible()).arg(axis.maxVisible()), shown);
    QVERIFY(!textsOf(axis).isEmpty());
    axis.setUnit("V");
    QVERIFY(changed.wait()); // without another message
}

void tst_chartaxis::title()
{
    ChartAxis axis;
    axis.range(0.0, 5e9);
    axis.setUnit("Hz");
    const int margin = axis.requiredMargin();
    QCOMPARE(textsOf(axis).filter("GHz").size(), 1);
    axis.setTitle("Frequency");
    QVERIFY(textsOf(axis).contains("Frequency (GHz)"));
    QCOMPARE(textsOf(axis).filter("GHz").size(), 1);
    QTRY_COMPARE(axis.margin(), axis.requiredMargin());
    QCOMPARE(axis.requiredMargin(), margin); // in place of the row of the unit
    axis.setTitle(QString(200, 'x'));
    QCOMPARE(textsOf(axis).filter(QRegularExpression("^x{9,90}\u2026 .GHz.$")).size(), 1);
    QVERIFY(textsOf(axis, 50.0).contains("GHz")); // without anything of the title
    // A unit that is none leaves room for the rest.
    axis.setUnit(QString(5000, 'u'));
    QCOMPARE(textsOf(axis).filter(QRegularExpression("^x+\u2026 .u{5,40}\u2026.$")).size(), 1);
    ChartAxis vertical;
    vertical.setAlignment(Qt::AlignLeft);
    vertical.setUnit(QString(500, 'W'));
    QVERIFY(vertical.requiredMargin() < 200);
    QVERIFY(QRegularExpression("^W+\u2026$").match(vertical.look().unit).hasMatch());
    axis.setMargin(7);
    axis.setUnit("");
    QTest::qWait(1);
    QCOMPARE(axis.margin(), 7);
}

// Beside a title from right to left a unit is still read from left to right, and so is a number before such a unit.
void tst_chartaxis::rightToLeft()
{
    const QString hebrew = QString::fromUtf8("\u05d8\u05de\u05e4");
    ChartAxis axis;
    axis.setUnit(QString::fromUtf8("\u00b0C"));
    axis.setTitle(hebrew);
    QVERIFY(!textsOf(axis).filter(QChar(0x2068)).isEmpty()); // each direction is painted by itself
    const QString title = hebrew + graph::unitInBrackets(axis.unit(), hebrew);
    const auto isBefore = [](const QString &text, const QString &left, const QString &right) {
        QTextLayout layout(text);
        layout.beginLayout();
        layout.createLine();
        layout.endLayout();
        const auto place = [&](const QString &part) {
            return layout.glyphRuns(text.indexOf(part), 1).value(0).boundingRect().center().x();
        };
        return place(left) < place(right);
    };
    QVERIFY(isBefore(title, QString::fromUtf8("\u00b0"), "C"));
    QVERIFY(isBefore(title, "C", hebrew));
    axis.setTitle("T");
    QVERIFY(textsOf(axis).contains(QString::fromUtf8("T (\u00b0C)")));
    QCOMPARE(axis.valueText(-0.5), QString::fromUtf8("-0.500 \u00b0C"));
    axis.setUnit(hebrew);
    QVERIFY(isBefore(axis.valueText(-0.5), "-", "5"));
}

// Below their ticks, also in the corner with another axis, but within the window; in the unit of readings.
void tst_chartaxis::labelsAtTheEdges()
{
    ChartAxis axis;
    ChartAxis level;
    level.setAlignment(Qt::AlignLeft);
    axis.range(700.0, 1000.0);
    axis.setUnit("degC");
    axis.setTitle("Temperature");
    axis.setMargin(axis.requiredMargin());
    level.setMargin(level.requiredMargin());
    const QRectF area(100, 100, 501, 201);
    const PaintRecorder recorder([&](QPainter *painter) {
        axis.paintLabels(painter, area, {QRectF(0, 0, 610, 400), {axis.look(), level.look()}});
    });
    QVector<PaintRecorder::Text> texts = recorder.texts;
    QCOMPARE(texts.takeLast().text, QString::fromUtf8("Temperature (\u00b0C)"));
    std::sort(texts.begin(), texts.end(), [](auto &a, auto &b) { return a.rect.left() < b.rect.left(); });
    QCOMPARE(texts.first().text + texts.last().text, QString("7001000"));
    QVERIFY(std::abs(texts.first().rect.center().x() - area.left()) <= 1.0);
    QCOMPARE(texts.last().rect.right(), 608.0);
}

void tst_chartaxis::fixedTicks()
{
    ChartAxis axis;
    axis.setScale(ChartAxis::Logarithmic);
    axis.range(1000.0, 1.0);
    axis.setTicks({1.0, 30.0, 700.0, 5000.0});
    axis.setTickInterval(ValueAxis::FixedTicks);
    QCOMPARE(textsOf(axis), (QStringList{"700", "30", "1"}));
    FeetText formatter;
    axis.setFormatter(&formatter);
    axis.setTickInterval(ValueAxis::ScaledDecimal);
    QVERIFY(textsOf(axis).contains("<100>"));
    axis.setFormatter(nullptr);
    QVERIFY(textsOf(axis).contains("100"));
}

void tst_chartaxis::time()
{
    ChartAxis axis;
    axis.setScale(ChartAxis::Time);
    axis.setUtc(true);
    axis.range(1.7e9, 1.7e9 + 3600.0);
    QVERIFY(textsOf(axis).contains("22:30"));
    // As the ticks, with the date, and as finely as the view tells times apart.
    const std::pair<double, const char *> readings[] = {{3600.0, "14 Nov 22:13:20"},
                                                        {30.0, "14 Nov 22:13:20.25"},
                                                        {1e6, "14 Nov 22:13"},
                                                        {3e7, "14 Nov 2023 22:13"},
                                                        {1e9, "14 Nov 2023"}};
    for (const auto &[span, text] : readings) {
        axis.range(1.7e9, 1.7e9 + span);
        QCOMPARE(axis.valueText(1.7e9 + 0.25), QString(text));
    }
    for (const double end : {-6.3e10, 8.9e11, 1e300, -1e300}) {
        axis.range(0.0, end);
        textsOf(axis);
    }
}

void tst_chartaxis::valueText_data()
{
    columns<double, double, QString, double, QString>({"from", "to", "unit", "value", "text"});
    QTest::newRow("span") << 0.0 << 20e3 << "Hz" << 1234.567 << "1.23 kHz";
    QTest::newRow("zoomed") << 1200.0 << 1240.0 << "Hz" << 1234.567 << "1.23457 kHz";
    QTest::newRow("no prefix") << -100.0 << 0.0 << "dB" << -12.3456 << "-12.3 dB";
    QTest::newRow("no unit") << 0.0 << 5.0 << "" << 2.0 << "2.000";
    QTest::newRow("zero") << -1.0 << 1.0 << "V" << 0.0 << "0.000 V";
    QTest::newRow("missing") << 0.0 << 1.0 << "V" << qQNaN() << "---";
}

void tst_chartaxis::valueText()
{
    QFETCH(double, from);
    QFETCH(double, to);
    QFETCH(QString, unit);
    QFETCH(double, value);
    ChartAxis axis;
    axis.range(from, to);
    axis.setUnit(unit);
    QTEST(axis.valueText(value), "text");
}

void tst_chartaxis::besideEachOther()
{
    ChartAxis first;
    ChartAxis second;
    ValueAxis plain;
    XYScale plane;
    plane.setSize(QSizeF(400, 300));
    int margin = 30;
    for (ValueAxis *axis : {static_cast<ValueAxis *>(&first), static_cast<ValueAxis *>(&second), &plain}) {
        axis->setAlignment(Qt::AlignLeft);
        axis->setMargin(margin);
        margin += 10;
    }
    plane.setAxes({&first, &second, &plain});
    QCOMPARE(plane.margins().left(), 30 + 40 + 50);
    QCOMPARE(plain.look().offset, 0);
    QCOMPARE(first.look().offset, 50);
    QCOMPARE(second.look().offset, 80);
    first.setVisible(false);
    QCOMPARE(plane.margins().left(), 40 + 50);
    QCOMPARE(second.look().offset, 50);
}

void tst_chartaxis::followsData()
{
    ChartAxis axis;
    axis.setAlignment(Qt::AlignLeft);
    axis.setDataExtent(0.0, 80.0);
    QCOMPARE(axis.maxValue(), 1.0);
    axis.setAutoRange(ChartAxis::Fit);
    axis.setDataExtent(0.0, 80.0);
    QCOMPARE(axis.maxValue(), 90.0);
    axis.setMinValue(-20.0);
    axis.setDataExtent(0.0, 800.0);
    QCOMPARE(axis.minValue(), -20.0);
    QCOMPARE(axis.maxValue(), 900.0);
    axis.setMinValue(qQNaN());
    axis.setDataExtent(0.0, 800.0);
    QCOMPARE(axis.minValue(), 0.0);
    axis.range(5.0, 1.0);
    axis.setDataExtent(0.0, 800.0);
    QCOMPARE(axis.minValue(), 5.0);
    axis.setMaxValue(qQNaN());
    axis.setDataExtent(0.0, 800.0);
    QCOMPARE(axis.maxValue(), 0.0); // still reversed
}

QTEST_MAIN(tst_chartaxis)
#include "tst_chartaxis.moc"
