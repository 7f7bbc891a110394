// Runs a fixed set of scenes for a tool that counts instructions, see count.cmake: `benchmark_scenes` for all
// of them, `benchmark_scenes NAME` for one. The tool counts only between the marks, and writes what it
// counted after each scene.

#include "benchmarks/OwnCharts.h"
#include "plots/AreaPlot.h"
#include "plugin/Plugin.h"

#include <QGuiApplication>
#include <QQuickItem>

#include <cstring>
#include <functional>

#if __has_include(<valgrind/callgrind.h>)
#include <valgrind/callgrind.h>
#else
#include <unistd.h>
// An emulator that logs what it executes logs calls of the system with it, see tools/arm/count.sh.
#define CALLGRIND_START_INSTRUMENTATION ::access("count:begin", F_OK)
#define CALLGRIND_STOP_INSTRUMENTATION
#define CALLGRIND_DUMP_STATS_AT(name) ::access((QByteArray("count:") + name).constData(), F_OK)
#endif

using benchmark::Job;

namespace {

constexpr int countedFrames = 8; // as in count.cmake

void count(const char *scene, const std::function<void(int)> &frame)
{
    // What is made once only has been made then.
    frame(0);
    frame(1);
    CALLGRIND_START_INSTRUMENTATION;
    for (int i = 2; i < 2 + countedFrames; ++i)
        frame(i);
    CALLGRIND_DUMP_STATS_AT(scene);
    CALLGRIND_STOP_INSTRUMENTATION;
}

template <typename Chart> void countChart(const char *scene, Chart chart, const Job &job)
{
    benchmark::open(job, chart);
    benchmark::warmUp(job, chart);
    count(scene, [&](int frame) {
        benchmark::change(job, chart, frame);
        chart.frame();
    });
}

Job job(const char *work, int samples, int traces = 0)
{
    Job job;
    job.work = QString::fromLatin1(work);
    job.samples = samples;
    job.traces = traces;
    return job;
}

// A translucent area between two sparse curves that change places.
void countArea(const char *scene)
{
    benchmark::Stage stage(Job().size, R"(
        AreaPlot {
            id: area
            property var upper: PlotSeries { axisX: x; axisY: y }
            property var lower: PlotSeries { axisX: x; axisY: y }
            ValueAxis { id: x; maxVisible: 499 }
            ValueAxis { id: y; alignment: Qt.AlignLeft; minVisible: -50; maxVisible: 50 }
            minData: lower; maxData: upper
        })");
    const QVector<double> curves[] = {benchmark::noisyTrace(500, 1), benchmark::noisyTrace(500, 2)};
    count(scene, [&](int frame) {
        stage.object("upper")->setProperty("yData", QVariant::fromValue(curves[frame % 2]));
        stage.object("lower")->setProperty("yData", QVariant::fromValue(curves[1 - frame % 2]));
        stage.waitForFrame();
    });
}

void countHeatmap(const char *scene)
{
    benchmark::HeatmapStage stage(Job().size, 1024, 128);
    count(scene, [&](int) { stage.frame(); });
}

struct Scene
{
    const char *name;
    std::function<void(const char *)> run;
};

const Scene scenes[] = {
    {"new-trace", [](const char *name) { countChart(name, benchmark::BareTraces(1), job("new", 100000)); }},
    {"pan", [](const char *name) { countChart(name, benchmark::BareTraces(1), job("pan", 100000)); }},
    {"window", [](const char *name) { countChart(name, benchmark::BareTraces(1), job("window", 100000)); }},
    {"screen-new", [](const char *name) { countChart(name, benchmark::WholeScreen(), job("new", 1000, 4)); }},
    {"screen-pan", [](const char *name) { countChart(name, benchmark::WholeScreen(), job("pan", 1000, 4)); }},
    {"screen-window",
     [](const char *name) { countChart(name, benchmark::WholeScreen(), job("window", 1000, 1)); }},
    {"screen-cursor",
     [](const char *name) { countChart(name, benchmark::WholeScreen(), job("cursor", 1000, 4)); }},
    {"area", countArea},
    {"heatmap", countHeatmap},
};

} // namespace

int main(int argc, char **argv)
{
    benchmark::chooseSoftwareRendering();
    QGuiApplication application(argc, argv);
    Plugin().registerTypes("charts");
    for (const Scene &scene : scenes) {
        if (argc < 2 || std::strcmp(argv[1], scene.name) == 0)
            scene.run(scene.name);
    }
}
