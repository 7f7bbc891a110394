// Measures the screen of a Chart, built by hand from the types of the first module.

#include "benchmarks/OwnCharts.h"
#include "plugin/Plugin.h"

#include <QGuiApplication>

int main(int argc, char **argv)
{
    benchmark::chooseSoftwareRendering();
    const benchmark::Job job = benchmark::Job::fromArguments(argc, argv);
    QGuiApplication application(argc, argv);
    Plugin().registerTypes("charts");
    benchmark::WholeScreen screen(benchmark::chartByHand);
    return benchmark::run("byhand", job, screen);
}
