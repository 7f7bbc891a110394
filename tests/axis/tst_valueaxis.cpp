#include "axis/AxisBench.h"
#include "axis/ValueAxis.h"
#include "platform/ui/SystemLocale.h"
#include "support/Table.h"

#include <QFontMetrics>
#include <QSignalSpy>
#include <QtTest>

#include <cmath>

class tst_valueaxis : public QObject
{
    Q_OBJECT

private slots:
    void alignmentMovesTheAxis();
    void changesAreCoalesced();
    void pinnedSpanMoves();
    void spanSurvivesItsRange_data();
    void spanSurvivesItsRange();
    void followsTheZoomRect();
    void waitsForTheEndOfMovement();
    void textsOfValues();
    void requiredMarginIgnoresTheZoom();
};

void tst_valueaxis::alignmentMovesTheAxis()
{
    ValueAxis axis;
    QStringList order;
    connect(&axis, &ValueAxis::orientationChanged, [&] { order.append("orientation"); });
    connect(&axis, &ValueAxis::alignmentChanged, [&] { order.append("alignment"); });
    connect(&axis, &ValueAxis::marginChanged, [&] { order.append("margin"); });
    axis.setAlignment(Qt::AlignLeft);
    QCOMPARE(order, (QStringList{"orientation", "alignment", "margin"}));
    axis.setAlignment(Qt::AlignLeft | Qt::AlignTop);
    QCOMPARE(axis.orientation(), Qt::Horizontal);
    axis.setAlignment(Qt::AlignHCenter);
    QCOMPARE(axis.orientation(), Qt::Vertical);
}

void tst_valueaxis::changesAreCoalesced()
{
    struct Axis : ValueAxis
    {
        using ValueAxis::setScaleKind;
    } axis;
    QSignalSpy changed(&axis, SIGNAL(axisChanged()));
    axis.setAlignment(Qt::AlignLeft);
    axis.setMinValue(-5.0);
    axis.setTicks({1.0, 10.0});
    axis.setUnit("m");
    QCOMPARE(changed.count(), 0);
    QCoreApplication::processEvents();
    QCOMPARE(changed.count(), 1);

    axis.setMinVisible(-4.0);
    axis.setStaggered(true);
    axis.setLabelColor(Qt::red);
    axis.setMinValue(-5.0);
    QCoreApplication::processEvents();
    QCOMPARE(changed.count(), 1);

    // A margin that follows the required one belongs to the same change.
    connect(&axis, &ValueAxis::requiredMarginChanged, &axis,
            [&axis] { axis.setMargin(axis.requiredMargin()); });
    axis.setMaxValue(1e6);
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
    QCOMPARE(changed.count(), 2);
    QCOMPARE(axis.margin(), axis.requiredMargin());

    axis.setMinValue(1.0);
    QCoreApplication::processEvents();
    changed.clear();
    axis.setScaleKind(graph::ScaleKind::Logarithmic);
    QCoreApplication::processEvents();
    QCOMPARE(changed.count(), 1);
}

void tst_valueaxis::pinnedSpanMoves()
{
    ValueAxis axis;
    axis.setMaxValue(100.0);
    axis.setVisibleRange(10.0);
    QCOMPARE(axis.maxVisible(), 10.0);
    QStringList order;
    connect(&axis, &ValueAxis::minValueChanged, [&] { order.append("minValue"); });
    connect(&axis, &ValueAxis::maxValueChanged, [&] { order.append("maxValue"); });
    connect(&axis, &ValueAxis::minVisibleChanged, [&] { order.append("minVisible"); });
    connect(&axis, &ValueAxis::maxVisibleChanged, [&] { order.append("maxVisible"); });
    connect(&axis, &ValueAxis::valueRangeChanged, [&] { order.append("valueRange"); });
    axis.setMinValue(5.0);
    QCOMPARE(axis.maxVisible(), 15.0);
    QCOMPARE(order.mid(order.size() - 4),
             (QStringList{"minValue", "minVisible", "maxVisible", "valueRange"}));
    order.clear();
    axis.setMaxValue(90.0);
    QCOMPARE(order, (QStringList{"minVisible", "maxVisible", "maxValue", "valueRange"}));
    axis.setMaxVisible(90.0);
    axis.setMaxValue(120.0);
    QCOMPARE(axis.minVisible(), 110.0);
    QCOMPARE(order.mid(order.size() - 4),
             (QStringList{"maxValue", "minVisible", "maxVisible", "valueRange"}));
}

void tst_valueaxis::spanSurvivesItsRange_data()
{
    columns<double, double, double, double>({"lowest", "minValue", "maxValue", "shown"});
    const auto row = [](const char *name, double lowest, double minValue, double maxValue, double shown) {
        QTest::newRow(name) << lowest << minValue << maxValue << shown;
    };
    row("smaller", 30.0, 0.0, 50.0, 30.0);
    row("larger", 30.0, 0.0, 1000.0, 30.0);
    row("begin moves", 60.0, 50.0, 100.0, 60.0);
    row("too small above", 30.0, 0.0, 35.0, 25.0);
    row("too small below", 30.0, 33.0, 100.0, 33.0);
    row("further up", 30.0, 200.0, 300.0, 200.0);
    row("further down", 30.0, -300.0, -200.0, -210.0);
    row("at the begin", 0.0, 20.0, 80.0, 20.0);
    row("at the end", 90.0, 20.0, 80.0, 70.0);
}

void tst_valueaxis::spanSurvivesItsRange()
{
    QFETCH(double, lowest);
    QFETCH(double, minValue);
    QFETCH(double, maxValue);
    QFETCH(double, shown);
    for (const int way : {0, 1, 2, 3}) { // both directions, either end first
        ZoomRect zoom;
        ValueAxis axis;
        axis.setAlignment(way < 2 ? Qt::AlignBottom : Qt::AlignLeft);
        axis.setMaxValue(100.0);
        axis.setZoomRect(&zoom);
        axis.setVisibleRange(10.0);
        axis.setMaxVisible(lowest + 10.0);
        axis.setMinVisible(lowest);
        if (way % 2)
            axis.setMaxValue(maxValue);
        axis.setMinValue(minValue);
        axis.setMaxValue(maxValue);
        QVERIFY2(std::abs(axis.minVisible() - shown) < 1e-9, qPrintable(QString::number(axis.minVisible())));
        QVERIFY2(std::abs(axis.maxVisible() - shown - 10.0) < 1e-9,
                 qPrintable(QString::number(axis.maxVisible())));
    }
}

void tst_valueaxis::followsTheZoomRect()
{
    ZoomRect zoom;
    ValueAxis axis;
    axis.setMinValue(100.0);
    axis.setMaxValue(200.0);
    axis.setZoomRect(&zoom);
    QSignalSpy visibleRange(&axis, SIGNAL(visibleRangeChanged()));
    zoom.setCenterAndZoom({0.5F, 1.0F}, {0.5, 0.5});
    QCOMPARE(axis.minVisible(), 125.0);
    QCOMPARE(axis.maxVisible(), 175.0);
    QCOMPARE(visibleRange.count(), 1);
    zoom.setTop(0.5);
    QCOMPARE(visibleRange.count(), 1);
    axis.setMinVisible(150.0);
    QCOMPARE(zoom.left(), 0.5);
    axis.setScalable(false);
    zoom.setRight(0.6);
    QCOMPARE(axis.minVisible(), 100.0);
    QCOMPARE(axis.maxVisible(), 200.0);
    axis.setScalable(true);
    QCOMPARE(axis.maxVisible(), 160.0);

    // An axis that comes later sees the same.
    for (const Qt::Alignment alignment : {Qt::AlignBottom, Qt::AlignLeft}) {
        ZoomRect zoomed;
        ValueAxis early;
        ValueAxis late;
        early.setAlignment(alignment);
        late.setAlignment(alignment);
        early.setZoomRect(&zoomed);
        zoomed.setCenterAndZoom({0.25F, 0.25F}, {0.5, 0.5});
        late.setZoomRect(&zoomed);
        QVERIFY(late.minVisible() > 0.0 && late.minVisible() == early.minVisible());
        QVERIFY(late.maxVisible() < 1.0 && late.maxVisible() == early.maxVisible());
    }

    // Neither an empty range nor NaN gets into the rectangle.
    axis.setMaxVisible(std::nan(""));
    axis.setMaxValue(100.0);
    axis.setMinVisible(120.0);
    QCOMPARE(zoom.left(), 0.5);

    axis.setZoomRect(nullptr);
    zoom.setLeft(0.1);
    axis.setMaxVisible(130.0);
    QCOMPARE(axis.maxVisible(), 130.0);
    auto *shortLived = new ZoomRect;
    axis.setZoomRect(shortLived);
    delete shortLived;
    axis.setMinVisible(3.0);
    QCOMPARE(axis.minVisible(), 3.0);
}

void tst_valueaxis::waitsForTheEndOfMovement()
{
    QQuickItem flickable;
    ZoomRect zoom;
    zoom.setFlickable(&flickable);
    ValueAxis axis;
    axis.setZoomRect(&zoom);
    flickable.setProperty("moving", true);
    axis.setMinValue(-3.0);
    axis.setMaxValue(5.0);
    axis.setMaxValue(7.0);
    axis.setMinValue(0.0);
    QCOMPARE(axis.valueRange(), 1.0);
    flickable.setProperty("moving", false);
    emit zoom.movingChanged();
    QCOMPARE(axis.minValue(), 0.0);
    QCOMPARE(axis.maxValue(), 7.0);
}

void tst_valueaxis::textsOfValues()
{
    ValueAxis axis;
    axis.setTickLabels({"a", "b", "c"});
    QCOMPARE(axis.formattedValue(2.0), QString("c"));
    QCOMPARE(axis.formattedValue(2.5), QString("2.5"));
    QCOMPARE(axis.formattedValue(1234567.0), QString("1.23457e+06"));
    QCOMPARE(axis.localizationFactor(), 1.0);

    QPointer<BaseFormatter> adopted = new FeetText;
    axis.setFormatter(adopted);
    QCOMPARE(adopted->parent(), &axis);
    QCOMPARE(axis.formattedValue(2.0), QString("<2>"));
    const bool metric = SystemLocale::instance().getMeasurementSystem() == 0;
    QCOMPARE(axis.localizationFactor(), metric ? 0.3048 : 1.0);
    // Ticks are round in the unit that is shown.
    axis.setMaxVisible(100.0);
    const double shown = axis.interval10(5) * axis.localizationFactor();
    QCOMPARE(shown, metric ? 10.0 : 20.0);
    delete adopted;
    QCOMPARE(axis.formattedValue(2.0), QString("c"));
}

void tst_valueaxis::requiredMarginIgnoresTheZoom()
{
    ValueAxis axis;
    const int oneRow = axis.requiredMargin();
    axis.setStaggered(true);
    QVERIFY(axis.requiredMargin() >= 2 * oneRow - 6);

    axis.setAlignment(Qt::AlignLeft);
    const int forDecimals = axis.requiredMargin();
    const QFontMetrics metrics(axis.labelFont());
    QCOMPARE(forDecimals, metrics.horizontalAdvance("0.2") + 6);
    axis.setMinVisible(0.001);
    axis.setMaxVisible(0.002);
    QCOMPARE(axis.requiredMargin(), forDecimals);
    QSignalSpy changed(&axis, SIGNAL(requiredMarginChanged()));
    axis.setMinValue(-1000.0);
    QCoreApplication::processEvents();
    QCOMPARE(changed.count(), 1);
    QVERIFY(axis.requiredMargin() > forDecimals);
}

QTEST_MAIN(tst_valueaxis)
#include "tst_valueaxis.moc"
