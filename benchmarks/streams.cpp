// Measures live data and traces that compute, one after the other: milliseconds of the processor a frame, the
// median of many. Arguments as those of the other programs; --samples are those in view.

#include "axis/ValueAxis.h"
#include "benchmarks/Measurement.h"
#include "kit/data/Average.h"
#include "kit/data/MaxHold.h"
#include "kit/data/Smooth.h"
#include "kit/data/StreamSeries.h"
#include "data/PlotSeries.h"
#include "plots/GraphPlot.h"

#include <QGuiApplication>
#include <QQuickWindow>

#include <cstdio>
#include <fstream>
#include <memory>
#include <string>
#include <thread>

using benchmark::Job;

namespace {

// VmRSS: what the process has, VmHWM: what it had at most.
double memory(const char *key)
{
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.compare(0, 6, key) == 0)
            return 1024.0 * std::atof(line.c_str() + 6);
    }
    return 0.0;
}

// In the columns of a line of times, where the median is.
void printNumber(const char *what, const char *name, int samples, double number)
{
    std::printf("%s\t%s\t%d\t-\t-\t1\t%.2f\t-\t-\t-\t0\t0\n", what, name, samples, number);
}

// Streams of which the newest samples are in view.
class Roll
{
public:
    Roll(const Job &job, int channels)
        : m_samples(job.samples)
        , m_noise(benchmark::noisyTrace(std::min(job.samples, 1 << 20), 1))
    {
        m_axisX.setMaxValue(1e15);
        m_axisY.setAlignment(Qt::AlignLeft);
        m_axisY.setMinValue(-50.0);
        m_axisY.setMaxValue(50.0);
        for (int i = 0; i < channels; ++i) {
            m_streams.push_back(std::make_unique<graph::StreamSeries>());
            m_streams.back()->setCapacity(m_samples);
            auto *plot = new GraphPlot(m_window.contentItem());
            plot->setSize(job.size);
            plot->setAxisX(&m_axisX);
            plot->setAxisY(&m_axisY);
            plot->setPlotStyle(GraphPlot::LinePlot);
            plot->setPlotData(m_streams.back().get());
        }
        m_window.resize(job.size);
        QObject::connect(&m_window, &QQuickWindow::frameSwapped, [this] { ++m_frames; });
        m_window.show();
    }

    graph::StreamSeries &stream(int channel) { return *m_streams[std::size_t(channel)]; }

    // Until the capacity is full, and then some, so that every page has been used.
    void fill()
    {
        for (qint64 done = 0; done < 3 * qint64(m_samples); done += m_noise.size())
            for (const auto &stream : m_streams)
                stream->append(m_noise);
    }

    void append(int count)
    {
        for (const auto &stream : m_streams)
            stream->append(m_noise.constData(), std::min(count, int(m_noise.size())));
    }

    // From a thread of its own, a thousand at a time.
    void push(int count)
    {
        const double before = m_streams.back()->start();
        std::thread([this, count] {
            for (int done = 0; done < count; done += 1000)
                for (const auto &stream : m_streams)
                    stream->push(m_noise.constData(), std::min({1000, count - done, int(m_noise.size())}));
        }).join();
        while (m_streams.back()->start() == before || m_streams.back()->isChangePending())
            QCoreApplication::processEvents();
    }

    void show(double first)
    {
        m_axisX.setMaxVisible(first + m_samples - 1);
        m_axisX.setMinVisible(first);
        for (const int before = m_frames; m_frames == before;)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }

private:
    int m_samples;
    QVector<double> m_noise;
    std::vector<std::unique_ptr<graph::StreamSeries>> m_streams;
    ValueAxis m_axisX;
    ValueAxis m_axisY;
    QQuickWindow m_window;
    int m_frames = 0;
};

void runRolling(const Job &job)
{
    Roll roll(job, 1);
    roll.append(1000);
    roll.show(0);
    const double before = memory("VmRSS:");
    const int step = std::max(job.samples / 10000, 1);
    roll.fill();
    roll.show(roll.stream(0).start());
    const auto beyondSamples = [&](const char *key) {
        return (memory(key) - before) / job.samples - sizeof(double);
    };
    printNumber("memory", "held beyond the samples", job.samples, beyondSamples("VmRSS:"));
    printNumber("memory", "at most", job.samples, beyondSamples("VmHWM:"));
    const double start = roll.stream(0).start();
    benchmark::run("pan of live data that rest", job,
                   [&](int frame) { roll.show(start - double(frame) * step); });
    benchmark::run("chart that rolls", job, [&](int) {
        roll.append(step);
        roll.show(roll.stream(0).start());
    });
}

// A sixtieth of a second of eight channels at a million samples a second, a second of them in view.
void runPushed(Job job)
{
    job.samples = std::min(job.samples, 1000000);
    Roll roll(job, 8);
    roll.fill();
    benchmark::run("eight channels pushed", job, [&](int) {
        roll.push(job.samples / 60);
        roll.show(roll.stream(0).start());
    });
    qint64 dropped = 0;
    for (int i = 0; i < 8; ++i)
        dropped += roll.stream(i).dropped();
    printNumber("dropped", "eight channels pushed", job.samples, double(dropped));
}

void runChain(Job job)
{
    job.samples = std::min(job.samples, 100000);
    const QVector<double> traces[] = {benchmark::noisyTrace(job.samples, 1),
                                      benchmark::noisyTrace(job.samples, 2)};
    PlotSeries series;
    graph::Average average;
    graph::Smooth smooth;
    graph::MaxHold hold;
    average.setSource(&series);
    smooth.setSource(&average);
    smooth.setWindow(21);
    hold.setSource(&smooth);
    int changes = 0;
    QObject::connect(&hold, &PlotData::plotChanged, [&] { ++changes; });
    const auto frame = [&](int i) {
        series.setYData(traces[i % 2]);
        for (const int before = changes; changes == before;)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    };
    benchmark::run("average, smooth and hold in a chain", job, frame);
    average.setPower(true);
    benchmark::run("the same, averages of power", job, frame);
}

} // namespace

int main(int argc, char **argv)
{
    benchmark::chooseSoftwareRendering();
    Job job = Job::fromArguments(argc, argv);
    job.work = QStringLiteral("stream");
    QGuiApplication application(argc, argv);
    runRolling(job);
    runPushed(job);
    runChain(job);
}
