#include "simulator/Spectrogram.h"

#include "simulator/NoiseSource.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace simulation {

namespace {

constexpr double first = 88e6; // Hz
constexpr double last = 108e6;
constexpr double fade = 8.0;      // dB
constexpr double fadeRate = 0.05; // radians a sweep
constexpr double moveRate = 0.02;
constexpr quint64 sweepsPerHop = 25;
constexpr double noiseFloor = -106.0; // dBm
constexpr double noiseRange = 14.0;   // dB

struct Station
{
    double frequency;
    double level;
    double width;
};

// The sine of an angle that grows with each sweep, however many there have been.
double swing(double rate, quint64 sweep)
{
    return std::sin(std::fmod(rate * double(sweep), 2.0 * std::acos(-1.0)));
}

} // namespace

Spectrogram::Spectrogram(int samples, quint64 seed, double sweepsPerSecond)
    : m_samples(std::max(samples, 0))
    , m_seed(seed)
    , m_rate(sweepsPerSecond)
    , m_step((last - first) / std::max(m_samples - 1, 1))
{
}

QString Spectrogram::serviceName() const
{
    return QStringLiteral("spectrogram");
}

QVector<Trace> Spectrogram::traces() const
{
    TraceDescription description;
    description.label = QStringLiteral("Broadcast band");
    description.xLabel = QStringLiteral("Frequency");
    description.yLabel = QStringLiteral("Level");
    description.xUnits = QStringLiteral("Hz");
    description.yUnits = QStringLiteral("dBm");
    description.xRangeBegin = first;
    description.xRangeEnd = last;
    description.yRangeBegin = -110.0;
    description.yRangeEnd = -30.0;
    description.equallySpaced = true;
    description.xFirst = first;
    description.xIncrement = m_step;
    return {{QStringLiteral("levels"), description, {}, {}}};
}

QVector<SweptTrace> Spectrogram::sweep(quint64 number) const
{
    const double faded = fade * swing(fadeRate, number);
    const std::array<Station, 5> stations = {{{92.4e6, -42.0 + faded, 0.25e6},
                                              {99.1e6, -52.0 - faded, 0.2e6},
                                              {104.6e6, -40.0 + faded, 0.3e6},
                                              {hoppingFrequency(number), -58.0, 0.12e6},
                                              {98e6 + 6e6 * swing(moveRate, number), -48.0, 0.15e6}}};
    NoiseSource noise(m_seed, number, 0);
    QVector<double> levels(m_samples);
    for (int i = 0; i < m_samples; ++i) {
        levels[i] = noiseFloor + noiseRange * noise.uniform();
        for (const Station &station : stations) {
            const double away = (first + i * m_step - station.frequency) / station.width;
            levels[i] = std::max(levels[i], station.level - 12.0 * away * away);
        }
    }
    return {{QStringLiteral("levels"), levels}};
}

SweepTimes Spectrogram::times() const
{
    return SweepTimes::atRate(m_rate);
}

double Spectrogram::hoppingFrequency(quint64 sweep)
{
    return 90.5e6 + 1e6 * double(sweep / sweepsPerHop * 7 % 16);
}

} // namespace simulation
