#include "axis/AxisBench.h"
#include "axis/ValueAxis.h"
#include "cursors/GraphCursor.h"
#include "cursors/GraphMarker.h"
#include "data/PlotPoints.h"
#include "painters/CrossPainter.h"
#include "plots/ContainerPlot.h"
#include "plots/GraphPlot.h"
#include "plots/GraphPoint.h"

#include <QRandomGenerator>
#include <QtTest>

#include <algorithm>
#include <cmath>

namespace {

// Keeps the pixels at which a plot draws its samples.
class PixelRecorder : public GraphPoint
{
public:
    void paint(QPainter *, int x, int y) override { pixels.append(QPoint(x, y)); }
    QVector<QPoint> pixels;
};

// Of either scale.
class Axis : public ValueAxis
{
public:
    using ValueAxis::setScaleKind;
};

// The pixel of a value, counted with more digits than the program has.
int exactPixel(double value, double begin, double end, int size, bool isLogarithmic)
{
    if (isLogarithmic)
        return int(std::log(value / static_cast<long double>(begin)) * (size - 1) /
                       std::log(end / static_cast<long double>(begin)) +
                   1e-6L);
    const long double range = static_cast<long double>(end) - begin;
    return int((static_cast<long double>(value) - begin) * (size - 1) / range + 1e-6L);
}

// All that shows values, over the same two axes.
struct Chart
{
    Chart()
    {
        y.setAlignment(Qt::AlignLeft);
        for (AbstractPlot *item :
             {static_cast<AbstractPlot *>(&plot), static_cast<AbstractPlot *>(&container)}) {
            item->setRenderTarget(QQuickPaintedItem::Image);
            item->setAxisX(&x);
            item->setAxisY(&y);
        }
        plot.setPlotStyle(GraphPlot::ScatterPlot);
        plot.setPlotBaseline(true);
        plot.setGraphPoint(&point);
        plot.setPlotData(&data);
        auto markers = cursor.markers();
        markers.append(&markers, &marker);
        cross.setCrossSize(0);
    }
    void show(const QVector<double> &xs, const QVector<double> &ys, const QSize &size)
    {
        data.setXData(xs);
        data.setYData(ys);
        QCoreApplication::processEvents();
        plot.setSize(size);
        container.setSize(size);
        cursor.setSize(size);
        cursor.setPlots({&plot});
        marker.setVisible(true);
    }
    QPoint crossAt(double px, double py)
    {
        cross.setPoint1X(px);
        cross.setPoint1Y(py);
        const auto lines = PaintRecorder([&](QPainter *painter) { container.paint(painter); }).lines;
        return lines.size() == 2 ? lines.first().p1().toPoint() : QPoint(-1, -1);
    }

    Axis x;
    Axis y;
    PlotPoints data;
    PixelRecorder point;
    GraphPlot plot;
    ContainerPlot container;
    CrossPainter cross{&container};
    GraphCursor cursor;
    GraphMarker marker;
};

// The places of an axis' lines and the values shown there, from the lowest value on.
struct Ticks
{
    Ticks(Axis &axis, const QSize &size)
    {
        const bool horizontal = axis.orientation() == Qt::Horizontal;
        const QPoint corner(7, 3);
        const PaintRecorder recorder(
            [&](QPainter *painter) { axis.paintLines(painter, QRect(corner, size)); });
        for (const QLineF &line : recorder.lines) {
            places.append(int(horizontal ? line.x1() - corner.x() : line.y1() - corner.y()));
            const QPoint first = horizontal ? QPoint(places.last(), 0) : QPoint(0, places.last());
            const QPoint last = horizontal ? QPoint(places.last(), size.height() - 1)
                                           : QPoint(size.width() - 1, places.last());
            isWhole = isWhole && line == QLineF(first + corner, last + corner);
        }
        for (const double tick : axis.ticks(axis.numTicks())) {
            const bool mirrored = axis.rangeOrder() == ValueAxis::Decreasing;
            values.append(mirrored ? axis.minValue() + axis.maxValue() - tick : tick);
        }
        if (axis.rangeOrder() == ValueAxis::Decreasing) {
            std::reverse(places.begin(), places.end());
            std::reverse(values.begin(), values.end());
        }
    }
    QVector<int> places;
    QVector<double> values;
    bool isWhole = true; // each line crosses the plot area
};

} // namespace

class tst_samepixel : public QObject
{
    Q_OBJECT

private slots:
    void everythingAtOneValue();
};

void tst_samepixel::everythingAtOneValue()
{
    QRandomGenerator random(58);
    for (int round = 0; round < 400; ++round) {
        Chart chart;
        const QSize size(random.bounded(2, 700), random.bounded(2, 500));
        for (Axis *axis : {&chart.x, &chart.y}) {
            const double unit = std::pow(10.0, random.bounded(13) - 6);
            const bool isLogarithmic = random.bounded(3) == 0;
            const double begin = (random.bounded(200) - (isLogarithmic ? -1 : 100)) * unit / 10.0;
            const int extent = random.bounded(1, 100);
            axis->setMinValue(begin);
            axis->setMaxValue(begin + extent * unit);
            axis->setMinVisible(begin + random.bounded(3) * 0.1 * extent * unit);
            axis->setMaxVisible(axis->maxValue() - random.bounded(3) * 0.1 * extent * unit);
            axis->setScaleKind(isLogarithmic ? graph::ScaleKind::Logarithmic : graph::ScaleKind::Linear);
            axis->setNumTicks(random.bounded(1, 12));
            axis->setTickInterval(random.bounded(4) ? ValueAxis::ScaledDecimal : ValueAxis::ScaledBinary);
            axis->setRangeOrder(random.bounded(4) || isLogarithmic ? ValueAxis::Increasing
                                                                   : ValueAxis::Decreasing);
        }
        const Ticks columns(chart.x, size);
        const Ticks rows(chart.y, size);
        QCOMPARE(columns.places.size(), columns.values.size());
        QCOMPARE(rows.places.size(), rows.values.size());
        QVERIFY(columns.isWhole && rows.isWhole);
        const int count = int(std::min(columns.values.size(), rows.values.size()));
        chart.show(columns.values.mid(0, count), rows.values.mid(0, count), size);
        PaintRecorder([&](QPainter *painter) { chart.plot.paint(painter); });
        QCOMPARE(chart.point.pixels.size(), count);
        for (int i = 0; i < count; ++i) {
            const double x = columns.values.at(i);
            const double y = rows.values.at(i);
            const QPoint pixel(exactPixel(x, chart.x.minVisible(), chart.x.maxVisible(), size.width(),
                                          chart.x.scaleKind() == graph::ScaleKind::Logarithmic),
                               exactPixel(y, chart.y.maxVisible(), chart.y.minVisible(), size.height(),
                                          chart.y.scaleKind() == graph::ScaleKind::Logarithmic));
            QCOMPARE(QPoint(columns.places.at(i), rows.places.at(i)), pixel);
            QCOMPARE(chart.point.pixels.at(i), pixel);
            // A cross a hair outside is not drawn at all; ticks are sums and may end up there.
            const bool inside = x >= chart.x.minVisible() && x <= chart.x.maxVisible() &&
                                y >= chart.y.minVisible() && y <= chart.y.maxVisible();
            QCOMPARE(chart.crossAt(x, y), inside ? pixel : QPoint(-1, -1));
            QCOMPARE(QPoint(int(chart.plot.mapToItemX(x)), int(chart.plot.mapToItem(QPointF(x, y)).y())),
                     pixel);
            chart.cursor.setPosIndex(i);
            QCOMPARE(chart.cursor.posOnScreen(), pixel.x());
            chart.marker.setPosIndex(i);
            QCOMPARE(QPoint(chart.marker.posOnScreen(), chart.marker.yPosOnScreen()), pixel);
        }
    }
}

QTEST_MAIN(tst_samepixel)
#include "tst_samepixel.moc"
