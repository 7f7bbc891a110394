#include "simulator/DataLogger.h"

#include "simulator/NoiseSource.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace simulation {

namespace {

constexpr double pi = 3.14159265358979323846;
// What the clients keep; at 200 samples a second ten minutes.
constexpr int keptSamples = 120000;
constexpr double period = 12.0; // s
constexpr double runTime = 7.0;
constexpr double inrushDecay = 0.25;
constexpr double speedUp = 0.8;
constexpr double slowDown = 1.3;
constexpr double warming = 9.0;
constexpr double hot = 88.0; // degrees, where the winding would end up
constexpr double cold = 24.0;

struct Channel
{
    const char *prefix;
    const char *label;
    const char *unit;
    double lowest;
    double highest;
    double noise;
};

constexpr std::array<Channel, 4> channels = {{{"ch1", "Supply", "V", 11.0, 13.0, 0.015},
                                              {"ch2", "Current", "A", -1.0, 9.0, 0.06},
                                              {"ch3", "Speed", "Hz", -5.0, 60.0, 0.12},
                                              {"ch4", "Winding", "degC", 40.0, 75.0, 0.04}}};

// Exponentially from `begin` towards `end`.
double approach(double begin, double end, double time, double constant)
{
    return end + (begin - end) * std::exp(-time / constant);
}

double current(double time)
{
    return time < runTime ? approach(8.0, 3.2, time, inrushDecay) + 0.2 * std::sin(2.0 * pi * 6.5 * time)
                          : 0.0;
}

double speed(double time)
{
    constexpr double full = 50.0;
    const double atStop = approach(0.0, full, runTime, speedUp);
    return time < runTime ? approach(0.0, full, time, speedUp)
                          : approach(atStop, 0.0, time - runTime, slowDown);
}

double temperature(double time)
{
    // The temperature at which a cycle of warming and cooling ends where it began.
    const double heated = std::exp(-runTime / warming);
    const double cooled = std::exp(-(period - runTime) / warming);
    const double atStart = (cold + (hot - cold) * cooled - hot * heated * cooled) / (1.0 - heated * cooled);
    const double atStop = approach(atStart, hot, runTime, warming);
    return time < runTime ? approach(atStart, hot, time, warming)
                          : approach(atStop, cold, time - runTime, warming);
}

} // namespace

DataLogger::DataLogger(int samples, quint64 seed, double sweepsPerSecond)
    : m_samples(std::max(samples, 0))
    , m_seed(seed)
    , m_rate(sweepsPerSecond)
    , m_step(1.0 / (m_rate * std::max(m_samples, 1)))
    , m_phase(period * NoiseSource(seed, 0, 103).uniform())
{
}

QString DataLogger::serviceName() const
{
    return QStringLiteral("logger");
}

QVector<Trace> DataLogger::traces() const
{
    QVector<Trace> traces;
    for (const Channel &channel : channels) {
        TraceDescription description;
        description.label = QString::fromLatin1(channel.label);
        description.xLabel = QStringLiteral("Time");
        description.yLabel = description.label;
        description.xUnits = QStringLiteral("s");
        description.yUnits = QString::fromLatin1(channel.unit);
        description.xRangeEnd = keptSamples * m_step;
        description.yRangeBegin = channel.lowest;
        description.yRangeEnd = channel.highest;
        description.equallySpaced = true;
        description.xIncrement = m_step;
        traces.append({QString::fromLatin1(channel.prefix), description, {}, {}});
    }
    return traces;
}

QVector<SweptTrace> DataLogger::sweep(quint64 number) const
{
    QVector<SweptTrace> sweep;
    NoiseSource noise(m_seed, number, 0);
    for (const Channel &channel : channels)
        sweep.append({QString::fromLatin1(channel.prefix), QVector<double>(m_samples)});
    for (int i = 0; i < m_samples; ++i) {
        const double time = std::fmod(double(number) / m_rate + i * m_step + m_phase, period);
        const double load = current(time);
        const std::array<double, 4> values = {12.4 - 0.11 * load, load, speed(time), temperature(time)};
        for (size_t k = 0; k < channels.size(); ++k)
            sweep[int(k)].y[i] = values[k] + channels[k].noise * noise.gaussian();
    }
    return sweep;
}

SweepTimes DataLogger::times() const
{
    return SweepTimes::atRate(m_rate);
}

int DataLogger::capacity() const
{
    return keptSamples;
}

} // namespace simulation
