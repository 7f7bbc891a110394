// What a frame costs, counted rather than timed: values read, memory asked for.

#include "support/QmlDocument.h"

#include "data/PlotSeries.h"
#include "plots/GraphPlot.h"

#if defined(__GLIBC__) && !defined(GRAPH_SANITIZED)
#define COUNTS_ALLOCATIONS
namespace {
std::size_t allocations = 0;
}

extern "C" {
void *__libc_malloc(std::size_t size);
void *__libc_realloc(void *memory, std::size_t size);

void *malloc(std::size_t size)
{
    ++allocations;
    return __libc_malloc(size);
}

void *realloc(void *memory, std::size_t size)
{
    ++allocations;
    return __libc_realloc(memory, size);
}
}
#endif

class tst_paintcost : public QObject
{
    Q_OBJECT

private slots:
    void panReadsColumnEndsOnly();
    void allocatesNothingPerSample();
};

namespace {

constexpr int width = 101;

// A plot of 101 x 101 pixels that shows samples 0..count-1, give or take a few, between -50 and 50.
struct Bench
{
    explicit Bench(int count)
    {
        document.object("horizontal")->setProperty("maxVisible", count - 1.0);
        plot->setPlotStyle(GraphPlot::LinePlot);
    }

    void pan(double samples)
    {
        for (const char *edge : {"minVisible", "maxVisible"}) {
            QObject *axis = document.object("horizontal");
            axis->setProperty(edge, axis->property(edge).toDouble() + samples);
        }
    }

    QmlDocument document{R"(
        Item {
            property alias plot: plot
            property alias series: series
            property alias horizontal: horizontal
            ValueAxis { id: horizontal }
            ValueAxis { id: vertical; alignment: Qt.AlignLeft; minVisible: -50; maxVisible: 50 }
            PlotSeries { id: series; axisX: horizontal; axisY: vertical }
            GraphPlot { id: plot; width: 101; height: 101; plotData: series }
        })"};
    GraphPlot *plot = document.object<GraphPlot>("plot");
    PlotSeries *series = document.object<PlotSeries>("series");
};

} // namespace

// Once data has been painted twice, values inside the columns are not read again: behind the back of the
// series they are replaced by others, which a scan would draw.
void tst_paintcost::panReadsColumnEndsOnly()
{
    constexpr int count = 10000000;
    constexpr int fewValues = 200; // of 100000 in a column
    constexpr double shift = count / 1000.0;
    QVector<double> y(count, 10.0);
    Bench bench(count);
    bench.series->setYData(y);
    const QImage level = painted(bench.plot);
    QCOMPARE(painted(bench.plot), level);
    bench.pan(shift);
    QCOMPARE(bench.series->yData().constData(), y.constData()); // the caller's array

    double *values = const_cast<double *>(y.constData());
    const double samplesPerColumn = (count - 1.0) / (width - 1);
    for (int column = 0; column < width; ++column) {
        const int first = int(shift + column * samplesPerColumn) + fewValues;
        const int end = std::min(int(shift + (column + 1) * samplesPerColumn) - fewValues, count);
        std::fill(values + std::min(first, count), values + end, 40.0);
    }
    const QImage panned = painted(bench.plot);
    QCOMPARE(panned.copy(0, 0, width - 1, 101), level.copy(0, 0, width - 1, 101));

    // Announced, the new values are seen.
    bench.series->setXFirstValue(0.5);
    bench.series->setYData(QVector<double>(y) << 10.0);
    QVERIFY(painted(bench.plot) != level);
}

void tst_paintcost::allocatesNothingPerSample()
{
#ifdef COUNTS_ALLOCATIONS
    const auto allocationsOf = [](int count, int style, bool pans) {
        Bench bench(count);
        bench.plot->setProperty("plotStyle", style);
        for (double value : {10.0, 20.0}) {
            bench.series->setYData(QVector<double>(count, value));
            painted(bench.plot);
        }
        if (pans) {
            painted(bench.plot);
            bench.pan(1);
        } else {
            bench.series->setYData(QVector<double>(count, 30.0));
        }
        QCoreApplication::processEvents();
        QImage image(width, 101, QImage::Format_ARGB32_Premultiplied);
        QPainter painter(&image);
        const std::size_t before = allocations;
        bench.plot->paint(&painter);
        return int(allocations - before);
    };
    for (int style = GraphPlot::FillPlot; style <= GraphPlot::BarPlot; ++style) {
        const int few = allocationsOf(1000, style, false);
        QVERIFY2(few > 0 && few < 60, qPrintable(QString::number(few)));
        QCOMPARE(allocationsOf(1000000, style, false), few);
        QCOMPARE(allocationsOf(1000000, style, true), few);
    }
#else
    QSKIP("the allocator is another one");
#endif
}

QTEST_MAIN(tst_paintcost)
#include "tst_paintcost.moc"
