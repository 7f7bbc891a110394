#include "benchmarks/Measurement.h"

#include <QCoreApplication>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <string>

// A tool that counts instructions counts those of the timed frames, see run.sh --count.
#if __has_include(<valgrind/callgrind.h>)
#include <valgrind/callgrind.h>
#else
#define CALLGRIND_START_INSTRUMENTATION
#define CALLGRIND_STOP_INSTRUMENTATION
#define CALLGRIND_DUMP_STATS
#endif

namespace benchmark {

namespace {

constexpr int warmUpSamples = 1000;
constexpr int fewestFrames = 3;
constexpr int mostFrames = 400;

double milliseconds(clockid_t clock)
{
    timespec time;
    clock_gettime(clock, &time);
    return time.tv_sec * 1e3 + time.tv_nsec / 1e6;
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    const std::size_t middle = values.size() / 2;
    return values.size() % 2 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

// Of the process, in bytes; 0 where the system does not tell.
double memory(const std::string &key)
{
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.compare(0, key.size(), key) == 0)
            return 1024.0 * std::atof(line.c_str() + key.size());
    }
    return 0.0;
}

void forgetPeakMemory()
{
    std::ofstream("/proc/self/clear_refs") << "5";
}

class Frames
{
public:
    explicit Frames(double seconds)
        : m_end(milliseconds(CLOCK_MONOTONIC) + seconds * 1e3)
    {
    }

    bool wantsMore() const
    {
        const int done = int(m_cpu.size());
        return done < fewestFrames || (done < mostFrames && milliseconds(CLOCK_MONOTONIC) < m_end);
    }

    template <typename Function> void time(Function frame)
    {
        const double wall = milliseconds(CLOCK_MONOTONIC);
        const double cpu = milliseconds(CLOCK_PROCESS_CPUTIME_ID);
        frame();
        m_cpu.push_back(milliseconds(CLOCK_PROCESS_CPUTIME_ID) - cpu);
        m_wall.push_back(milliseconds(CLOCK_MONOTONIC) - wall);
    }

    void print(const char *name, const Job &job, double held = 0.0, double peak = 0.0) const
    {
        std::printf("%s\t%s\t%d\t%dx%d\t%d\t%d\t%.4f\t%.4f\t%.4f\t%.4f\t%.2f\t%.2f\n", qPrintable(job.work),
                    name, job.samples, job.size.width(), job.size.height(), job.pen, int(m_cpu.size()),
                    median(m_cpu), *std::min_element(m_cpu.begin(), m_cpu.end()),
                    *std::max_element(m_cpu.begin(), m_cpu.end()), median(m_wall), held, peak);
    }

private:
    double m_end;
    std::vector<double> m_cpu;
    std::vector<double> m_wall;
};

[[noreturn]] void complain(const char *argument)
{
    std::fprintf(stderr, "Not understood: %s\n", argument);
    std::exit(2);
}

} // namespace

Job Job::fromArguments(int argc, char **argv)
{
    Job job;
    for (int i = 1; i < argc; i += 2) {
        const std::string key = argv[i];
        if (i + 1 == argc)
            complain(argv[i]);
        const char *value = argv[i + 1];
        if (key == "--work")
            job.work = QString::fromLatin1(value);
        else if (key == "--samples")
            job.samples = int(std::atof(value));
        else if (key == "--size")
            std::sscanf(value, "%dx%d", &job.size.rwidth(), &job.size.rheight());
        else if (key == "--pen")
            job.pen = std::atoi(value);
        else if (key == "--traces")
            job.traces = std::atoi(value);
        else if (key == "--scale" && value == std::string("logarithmic"))
            job.logarithmic = true;
        else if (key == "--seconds")
            job.seconds = std::atof(value);
        else
            complain(argv[i]);
    }
    if (job.samples < 2 || job.size.isEmpty() || job.pen < 1)
        complain("samples, size or pen");
    return job;
}

// Each frame needs a change, or there is none. Moved once, whatever is kept for that is there.
static void showAndMove(Contender &contender, int set, int samples)
{
    contender.useSet(set);
    for (int beyond = 0; beyond < 3; ++beyond) {
        contender.setVisible(0, samples - 1 + beyond);
        contender.frame();
    }
}

void open(const Job &job, Contender &contender)
{
    contender.prepare(job,
                      {noisyTrace(warmUpSamples, 1), noisyTrace(job.samples, 2), noisyTrace(job.samples, 3)});
    showAndMove(contender, 0, warmUpSamples);
}

void warmUp(const Job &job, Contender &contender)
{
    showAndMove(contender, 1, job.samples);
    contender.setVisible(0, job.samples - 1);
    // Once more, because what has not changed from one frame to the next may be kept from then on. Each with what is not there
    // yet, and last not with what the first frame that counts brings: a chart may not paint what is no change, and would
    // be one change behind from then on.
    const auto changes = [&](std::initializer_list<int> frames) {
        for (const int i : frames) {
            change(job, contender, i);
            contender.frame();
        }
    };
    changes({1, 0, 1});
    contender.settle();
    // A frame at rest has had images made of lines, which the first change gives back.
    changes({0, 1});
}

void change(const Job &job, Contender &contender, int frame)
{
    const double last = job.samples - 1;
    if (job.work == QLatin1String("pan")) {
        // A step of the finger: one pixel and a bit, so that the columns never hold the same samples twice.
        const double shift = last * (frame % 16) * 1.3 / job.size.width();
        contender.setVisible(shift, last + shift);
    } else if (job.work == QLatin1String("window")) {
        const double width = last / 100;
        const double first = std::fmod(frame * width / 7, last - width);
        contender.setVisible(first, first + width);
    } else if (job.work == QLatin1String("cursor")) {
        // Over three quarters of the width, by odd steps.
        contender.moveCursor(job.size.width() / 8 + frame * 7 % (job.size.width() * 3 / 4));
    } else {
        contender.useSet(1 + frame % 2);
    }
}

int run(const char *name, const Job &job, Contender &contender)
{
    open(job, contender);
    const double heldBefore = memory("VmRSS:");
    forgetPeakMemory();
    warmUp(job, contender);
    CALLGRIND_START_INSTRUMENTATION;
    Frames frames(job.seconds);
    const bool firstPan = job.work == QLatin1String("first-pan");
    for (int i = 0; frames.wantsMore(); ++i) {
        if (firstPan) {
            contender.useSet(1 + i % 2);
            contender.setVisible(0, job.samples - 1);
            contender.frame();
            frames.time([&] {
                contender.setVisible(1, job.samples);
                contender.frame();
            });
        } else {
            frames.time([&] {
                change(job, contender, i);
                contender.frame();
            });
        }
    }
    CALLGRIND_DUMP_STATS;
    CALLGRIND_STOP_INSTRUMENTATION;
    frames.print(name, job, (memory("VmRSS:") - heldBefore) / job.samples,
                 (memory("VmHWM:") - heldBefore) / job.samples);
    return 0;
}

int run(const char *name, const Job &job, const std::function<void(int)> &frame)
{
    frame(0);
    frame(1);
    CALLGRIND_START_INSTRUMENTATION;
    Frames frames(job.seconds);
    for (int i = 0; frames.wantsMore(); ++i)
        frames.time([&] { frame(i); });
    CALLGRIND_DUMP_STATS;
    CALLGRIND_STOP_INSTRUMENTATION;
    frames.print(name, job);
    return 0;
}

QVector<double> noisyTrace(int samples, unsigned int seed)
{
    QVector<double> values(samples);
    unsigned int state = seed * 2654435761u;
    double *out = values.data();
    for (int i = 0; i < samples; ++i) {
        state = state * 1664525u + 1013904223u;
        const double noise = (state >> 8) / double(1 << 24) - 0.5;
        out[i] = 30.0 * std::sin(i * 12.0 / samples + seed) + 20.0 * noise;
    }
    return values;
}

void chooseSoftwareRendering()
{
    const auto choose = [](const char *name, const char *value) {
        if (!qEnvironmentVariableIsSet(name))
            qputenv(name, value);
    };
    choose("QT_QPA_PLATFORM", "offscreen");
    choose("QT_QUICK_BACKEND", "software");
    choose("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent/no-bus");
    // A frame follows a change at once, not after the 5 ms in which others may arrive.
    choose("QT_QPA_UPDATE_IDLE_TIME", "0");
}

} // namespace benchmark
