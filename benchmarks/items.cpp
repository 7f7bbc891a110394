// Measures the chart items of this project in a window, of the software scene graph unless the environment asks for
// another one.

#include "benchmarks/OwnCharts.h"
#include "kit/axis/ChartAxis.h"
#include "plugin/Plugin.h"

#include <QGuiApplication>
#include <QQuickItem>
#include <QTimer>

using benchmark::Job;

namespace {

// What a second costs in which nothing changes.
int runIdle(const Job &job)
{
    benchmark::BareTraces trace(1);
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

// The least that a frame costs on a scene graph: a window in which one small rectangle changes.
int runEmpty(const Job &job)
{
    benchmark::Stage stage(job.size,
                           "Item { property alias spot: spot; Rectangle { id: spot; width: 8; height: 8 } }");
    QObject *spot = stage.object("spot");
    return benchmark::run("empty", job, [&](int frame) {
        spot->setProperty("x", 1 - frame % 2);
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
    qmlRegisterType<graph::ChartAxis>("charts", 1, 0, "ChartAxis");
    if (job.work == QLatin1String("heat")) {
        benchmark::HeatmapStage stage(job.size, 4096, 512);
        return benchmark::run("items", job, [&](int) { stage.readAndFrame(); });
    }
    if (job.work == QLatin1String("idle"))
        return runIdle(job);
    if (job.work == QLatin1String("empty"))
        return runEmpty(job);
    if (job.traces > 0) {
        benchmark::WholeScreen screen;
        return benchmark::run("items", job, screen);
    }
    benchmark::BareTraces contender(job.work == QLatin1String("ten") ? 10 : 1);
    return benchmark::run("items", job, contender);
}
