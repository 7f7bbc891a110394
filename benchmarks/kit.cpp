// Measures the plots of the second module in a window of the software scene graph.

#include "axis/ValueAxis.h"
#include "benchmarks/OwnCharts.h"
#include "kit/plots/Trace.h"
#include "kit/plots/WaterfallPlot.h"
#include "plugin/Plugin.h"

#include <QGuiApplication>
#include <QQuickItem>
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
    QGuiApplication application(argc, argv);
    Plugin().registerTypes("charts");
    qmlRegisterType<graph::Trace>("charts", 1, 0, "Trace");
    qmlRegisterType<graph::WaterfallPlot>("charts", 1, 0, "WaterfallPlot");
    if (job.work == QLatin1String("waterfall"))
        return runWaterfall(job);
    TraceContender contender;
    return benchmark::run("kit", job, contender);
}
