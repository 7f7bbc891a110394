// Measures live data and traces that compute, one after the other: milliseconds of the processor a frame, the
// median of many. Arguments as those of the other programs; --samples are those in view, and --work pushed leaves out
// all but what another thread pushes.

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
#include <QVector2D>

#include <cmath>
#include <cstdio>
#include <fstream>
#include <memory>
#include <string>
#include <thread>
#include <vector>

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

// A ring buffer and what a chart of an immediate-mode interface makes of it with each frame: the vertices of the line,
// two triangles between each sample and the next. They go to the graphics processor in portions; what that takes to
// draw them is not part of this.
class Ring
{
public:
    explicit Ring(int samples)
        : m_samples(std::size_t(samples))
        , m_vertices(4 * portion)
        , m_indices(6 * portion)
    {
    }

    void append(const double *values, int count)
    {
        for (int i = 0; i < count; ++i) {
            m_samples[m_offset] = values[i];
            m_offset = m_offset + 1 == m_samples.size() ? 0 : m_offset + 1;
        }
    }

    // Gives something of each portion, so that none is left out.
    float draw(const QSize &size)
    {
        const float scaleX = float(size.width()) / float(m_samples.size());
        const float scaleY = float(size.height()) / 100.0f;
        const auto at = [&](std::size_t i) {
            const std::size_t place = m_offset + i;
            const double value = m_samples[place < m_samples.size() ? place : place - m_samples.size()];
            return QVector2D(float(i) * scaleX, (50.0f - float(value)) * scaleY);
        };
        float taken = 0.0f;
        int used = 0;
        QVector2D from = at(0);
        for (std::size_t i = 1; i < m_samples.size(); ++i) {
            const QVector2D to = at(i);
            addLine(used, from, to);
            from = to;
            if (++used == portion) {
                taken += m_vertices[std::size_t(used)].y;
                used = 0;
            }
        }
        return taken;
    }

private:
    struct Vertex
    {
        float x, y, u, v;
        quint32 color;
    };
    static constexpr int portion = 10000;

    void addLine(int number, const QVector2D &from, const QVector2D &to)
    {
        const QVector2D along = to - from;
        const float length = std::sqrt(along.x() * along.x() + along.y() * along.y());
        const float part = length > 0.0f ? 0.5f / length : 0.0f;
        const float sideX = along.y() * part;
        const float sideY = -along.x() * part;
        Vertex *vertex = m_vertices.data() + 4 * number;
        vertex[0] = {from.x() + sideX, from.y() + sideY, 0, 0, 0xff000000};
        vertex[1] = {to.x() + sideX, to.y() + sideY, 0, 0, 0xff000000};
        vertex[2] = {to.x() - sideX, to.y() - sideY, 0, 0, 0xff000000};
        vertex[3] = {from.x() - sideX, from.y() - sideY, 0, 0, 0xff000000};
        quint32 *index = m_indices.data() + 6 * number;
        for (const int corner : {0, 1, 2, 0, 2, 3})
            *index++ = quint32(4 * number + corner);
    }

    std::vector<double> m_samples;
    std::vector<Vertex> m_vertices;
    std::vector<quint32> m_indices;
    std::size_t m_offset = 0;
};

void runRing(const Job &job)
{
    const QVector<double> noise = benchmark::noisyTrace(std::min(job.samples, 1 << 20), 1);
    Ring ring(job.samples);
    for (qint64 done = 0; done < job.samples; done += noise.size())
        ring.append(noise.constData(), noise.size());
    float taken = 0.0f;
    benchmark::run("vertices of a ring buffer", job, [&](int) {
        ring.append(noise.constData(), std::max(job.samples / 10000, 1));
        taken += ring.draw(job.size);
    });
    if (std::isnan(taken))
        std::puts("The ring holds something else than noise");
}

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
    const bool isPushedOnly = job.work == QLatin1String("pushed");
    job.work = QStringLiteral("stream");
    QGuiApplication application(argc, argv);
    if (!isPushedOnly)
        runRolling(job);
    if (!isPushedOnly)
        runRing(job);
    runPushed(job);
    if (!isPushedOnly)
        runChain(job);
}
