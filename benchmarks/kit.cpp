// Measures the plots and the chart of the second module in a window of the software scene graph.

#include "axis/ValueAxis.h"
#include "benchmarks/OwnCharts.h"
#include "cursors/GraphCursor.h"
#include "cursors/GraphMarker.h"
#include "kit/axis/ChartAxis.h"
#include "kit/plots/Trace.h"
#include "kit/plots/WaterfallPlot.h"
#include "plugin/Plugin.h"

#include <QEventLoop>
#include <QGuiApplication>
#include <QQuickItem>
#include <QTimer>
#include <QtQml>

using benchmark::Job;
using benchmark::Stage;

namespace {

// As the line of the same width in the benchmark of the items.
class TraceContender : public benchmark::Contender
{
public:
    void prepare(const Job &job, const QVector<QVector<double>> &sets) override
    {
        m_sets = sets;
        m_stage = std::make_unique<Stage>(job.size, R"(
            Trace {
                axisX: ValueAxis {}
                axisY: ValueAxis { alignment: Qt.AlignLeft; minValue: -50; maxValue: 50; minVisible: -50; maxVisible: 50 }
            })");
        m_trace = qobject_cast<graph::Trace *>(m_stage->item());
        m_trace->setLineWidth(job.pen);
        m_trace->axisX()->setProperty("maxValue", 1.2 * job.samples);
    }

    void useSet(int set) override { m_trace->setValues(m_sets.at(set)); }

    void setVisible(double first, double last) override
    {
        m_trace->axisX()->setProperty("maxVisible", last);
        m_trace->axisX()->setProperty("minVisible", first);
    }

    void moveCursor(int) override {}
    void frame() override { m_stage->waitForFrame(); }

private:
    QVector<QVector<double>> m_sets;
    std::unique_ptr<Stage> m_stage;
    graph::Trace *m_trace = nullptr;
};

// What benchmark_items builds of single items for --traces, as a chart makes it by itself; with fixed ranges, as
// there.
class ChartContender : public benchmark::Contender
{
public:
    void prepare(const Job &job, const QVector<QVector<double>> &sets) override
    {
        m_sets = sets;
        QByteArray traces;
        for (int i = 0; i < job.traces; ++i)
            traces += "Trace { name: \"Trace " + QByteArray::number(i) + "\"; unit: \"V\"; values: [0] }\n";
        m_stage = std::make_unique<Stage>(job.size, R"(
            import graph_kit 1.0
            Chart {
                property alias ownCursor: cursor
                axisX { autoRange: ChartAxis.Off; unit: "s" }
                axisY { autoRange: ChartAxis.Off; minValue: -50; maxValue: 50 }
                ChartCursor {
                    id: cursor
                    markers: [
                        GraphMarker { visible: true; color: "teal"; deltaY: 40 },
                        GraphMarker { visible: true; color: "brown"; deltaY: 60 }
                    ]
                }
            )" + traces + "}");
        m_stage->object("axisX")->setProperty("maxValue", 1.2 * job.samples);
        m_cursor = qobject_cast<GraphCursor *>(m_stage->object("ownCursor"));
        m_traces = m_stage->item()->findChildren<graph::Trace *>();
        if (m_traces.size() != job.traces)
            qFatal("%d traces instead of %d", int(m_traces.size()), job.traces);
        for (graph::Trace *trace : qAsConst(m_traces))
            trace->setLineWidth(job.pen);
    }

    void useSet(int set) override
    {
        const QVector<double> &values = m_sets.at(set);
        const bool fits = m_size == values.size();
        for (graph::Trace *trace : qAsConst(m_traces))
            trace->setValues(values);
        m_size = values.size();
        if (fits)
            return;
        m_cursor->setPosIndex(m_size / 2);
        auto markers = m_cursor->markers();
        for (int i = 0; i < markers.count(&markers); ++i)
            markers.at(&markers, i)->setPosIndex((i + 1) * m_size / 5);
    }

    void setVisible(double first, double last) override
    {
        QMetaObject::invokeMethod(m_stage->item(), "showRange", Q_ARG(double, first), Q_ARG(double, last));
    }

    void moveCursor(int pixel) override { m_cursor->setPosOnScreen(pixel); }
    void frame() override { m_stage->waitForFrame(); }

    // Diagnosis looks at the first data.
    void settle() override
    {
        QEventLoop loop;
        QTimer::singleShot(1500, &loop, &QEventLoop::quit);
        loop.exec();
    }

private:
    QVector<QVector<double>> m_sets;
    int m_size = 0;
    std::unique_ptr<Stage> m_stage;
    GraphCursor *m_cursor = nullptr;
    QList<graph::Trace *> m_traces;
};

// A frame for each row of 2048 levels, with 1000 rows in view.
int runWaterfall(const Job &job)
{
    constexpr int columns = 2048;
    constexpr int rows = 1000;
    Stage stage(job.size, "WaterfallPlot { rows: 1000; from: -50; to: 50 }");
    auto *plot = qobject_cast<graph::WaterfallPlot *>(stage.item());
    const QVector<double> noise = benchmark::noisyTrace(columns * 16, 1);
    const auto add = [&](int row) { plot->addRow(noise.constData() + columns * (row % 16), columns); };
    for (int row = 0; row < rows; ++row)
        add(row);
    stage.waitForFrame();
    return benchmark::run("kit", job, [&](int round) {
        add(round);
        stage.waitForFrame();
    });
}

} // namespace

int main(int argc, char **argv)
{
    benchmark::chooseSoftwareRendering();
    const Job job = Job::fromArguments(argc, argv);
    // Before what is set already, such as Qt's own modules elsewhere.
    qputenv("QML2_IMPORT_PATH", QML_DIR ":" + qgetenv("QML2_IMPORT_PATH"));
    QGuiApplication application(argc, argv);
    Plugin().registerTypes("charts");
    qmlRegisterType<graph::Trace>("charts", 1, 0, "Trace");
    qmlRegisterType<graph::WaterfallPlot>("charts", 1, 0, "WaterfallPlot");
    if (job.work == QLatin1String("waterfall"))
        return runWaterfall(job);
    std::unique_ptr<benchmark::Contender> contender;
    if (job.traces > 0)
        contender = std::make_unique<ChartContender>();
    else
        contender = std::make_unique<TraceContender>();
    return benchmark::run("kit", job, *contender);
}
