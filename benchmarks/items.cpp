// Measures the chart items of this project in a window of the software scene graph.

#include "benchmarks/Measurement.h"
#include "data/PlotSeries.h"
#include "plots/GraphPlot.h"
#include "plots/HeatmapPlot.h"
#include "plugin/Plugin.h"
#include "simulator/Heatmap.h"

#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickWindow>
#include <QTemporaryDir>
#include <QTimer>

#include <iostream>
#include <memory>

using benchmark::Job;

namespace {

// A window with one item in it.
class Stage
{
public:
    Stage(const Job &job, const QByteArray &document)
    {
        QQmlComponent component(&m_engine);
        component.setData("import QtQuick 2.15\nimport charts 1.0\n" + document, QUrl());
        m_item.reset(qobject_cast<QQuickItem *>(component.create()));
        if (!m_item)
            qFatal("%s", qPrintable(component.errorString()));
        m_window.resize(job.size);
        m_item->setParentItem(m_window.contentItem());
        m_item->setSize(job.size);
        QObject::connect(&m_window, &QQuickWindow::frameSwapped, [this] { ++m_frames; });
        m_window.show();
        waitForFrame();
    }

    QQuickItem *item() const { return m_item.get(); }
    int frames() const { return m_frames; }

    void waitForFrame() const
    {
        for (const int before = m_frames; m_frames == before;)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }

private:
    QQmlEngine m_engine;
    QQuickWindow m_window;
    std::unique_ptr<QQuickItem> m_item;
    int m_frames = 0;
};

const char traces[] = R"(
    Item {
        id: root
        property int count: 1
        property alias axis: horizontal
        ValueAxis { id: horizontal }
        ValueAxis { id: vertical; alignment: Qt.AlignLeft; minValue: -50; maxValue: 50; minVisible: -50; maxVisible: 50 }
        Repeater {
            model: root.count
            GraphPlot {
                anchors.fill: parent
                axisX: horizontal; axisY: vertical
                plotStyle: GraphPlot.LinePlot
                plotData: PlotSeries {}
            }
        }
    })";

class Traces : public benchmark::Contender
{
public:
    explicit Traces(int count)
        : m_count(count)
    {
    }

    void prepare(const Job &job, const QVector<QVector<double>> &sets) override
    {
        m_sets = sets;
        m_stage = std::make_unique<Stage>(job, traces);
        m_stage->item()->setProperty("count", m_count);
        m_axis = m_stage->item()->property("axis").value<QObject *>();
        m_axis->setProperty("maxValue", 1.2 * job.samples);
        const auto children = m_stage->item()->childItems();
        for (QQuickItem *child : children) {
            auto *plot = qobject_cast<GraphPlot *>(child);
            if (!plot)
                continue;
            plot->setMinLineWidth(job.pen);
            plot->setMaxLineWidth(job.pen);
            m_series.append(qobject_cast<PlotSeries *>(plot->plotData()));
        }
        if (m_series.size() != m_count)
            qFatal("%d traces instead of %d", int(m_series.size()), m_count);
    }

    void useSet(int set) override
    {
        for (PlotSeries *series : qAsConst(m_series))
            series->setYData(m_sets.at(set));
    }

    void setVisible(double first, double last) override
    {
        m_axis->setProperty("maxVisible", last);
        m_axis->setProperty("minVisible", first);
    }

    void frame() override { m_stage->waitForFrame(); }
    int frames() const { return m_stage->frames(); }

private:
    int m_count;
    QVector<QVector<double>> m_sets;
    std::unique_ptr<Stage> m_stage;
    QObject *m_axis = nullptr;
    QVector<PlotSeries *> m_series;
};

int runHeatmap(const Job &job)
{
    constexpr int columns = 4096;
    constexpr int rows = 512;
    simulation::Heatmap heatmap;
    heatmap.columnCount = columns;
    heatmap.rowCount = rows;
    heatmap.rowStep = 0.2;
    for (int i = 0; i < columns; ++i)
        heatmap.columnFrequencies.push_back(5000000u + 20000u * unsigned(i));
    const QVector<double> noise = benchmark::noisyTrace(columns * rows, 1);
    for (double value : noise)
        heatmap.cells.push_back(static_cast<unsigned char>(int(value + 50) % 8));
    QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("map.heatmap"));
    QString error;
    if (!simulation::writeHeatmapFile(path, heatmap, &error))
        qFatal("%s", qPrintable(error));

    // The plot tells how long it took; that is not the result.
    std::cout.rdbuf(nullptr);
    Stage stage(job, R"(
        HeatmapPlot {
            dataDirectory: ""
            axisX: ValueAxis { minValue: 5; maxValue: 87; minVisible: 5; maxVisible: 87 }
            axisY: ValueAxis {
                alignment: Qt.AlignLeft; minValue: -103; maxValue: 0; minVisible: -103; maxVisible: 0
            }
        })");
    stage.item()->setProperty("dataFilePath", path);
    stage.waitForFrame();
    return benchmark::run("items", job, [&](int) {
        stage.item()->update();
        stage.waitForFrame();
    });
}

// What a second costs in which nothing changes.
int runIdle(const Job &job)
{
    Traces trace(1);
    trace.prepare(job, {benchmark::noisyTrace(job.samples, 1)});
    trace.useSet(0);
    trace.setVisible(0, job.samples - 1);
    const auto waitASecond = [] {
        QEventLoop loop;
        QTimer::singleShot(1000, &loop, &QEventLoop::quit);
        loop.exec();
    };
    waitASecond();
    const int frames = trace.frames();
    return benchmark::run("items", job, [&](int) {
        waitASecond();
        if (trace.frames() != frames)
            qFatal("painted although nothing had changed");
    });
}

} // namespace

int main(int argc, char **argv)
{
    benchmark::chooseSoftwareRendering();
    const Job job = Job::fromArguments(argc, argv);
    QGuiApplication application(argc, argv);
    Plugin().registerTypes("charts");
    if (job.work == QLatin1String("heat"))
        return runHeatmap(job);
    if (job.work == QLatin1String("idle"))
        return runIdle(job);
    Traces contender(job.work == QLatin1String("ten") ? 10 : 1);
    return benchmark::run("items", job, contender);
}
