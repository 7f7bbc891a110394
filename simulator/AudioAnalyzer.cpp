#include "simulator/AudioAnalyzer.h"

#include "simulator/NoiseSource.h"

#include <algorithm>
#include <cmath>

namespace simulation {

namespace {

constexpr double first = 20.0; // Hz
constexpr double last = 20000.0;
constexpr double lineWidth = 12.0;
constexpr double swellRate = 0.2;      // radians a sweep
constexpr double noise = 2e-6;         // of full scale, at the first frequency
constexpr double quietestNoise = 0.02; // of that

} // namespace

AudioAnalyzer::AudioAnalyzer(int samples, quint64 seed, double sweepsPerSecond)
    : m_samples(std::max(samples, 0))
    , m_seed(seed)
    , m_rate(sweepsPerSecond)
    , m_step((last - first) / std::max(m_samples - 1, 1))
{
}

QString AudioAnalyzer::serviceName() const
{
    return QStringLiteral("audio");
}

QVector<Trace> AudioAnalyzer::traces() const
{
    TraceDescription description;
    description.label = QStringLiteral("Microphone");
    description.xLabel = QStringLiteral("Frequency");
    description.yLabel = QStringLiteral("Level");
    description.xUnits = QStringLiteral("Hz");
    description.yUnits = QStringLiteral("dB");
    description.xRangeBegin = first;
    description.xRangeEnd = last;
    description.yRangeBegin = -110.0;
    description.equallySpaced = true;
    description.xFirst = first;
    description.xIncrement = m_step;
    return {{QStringLiteral("spectrum"), description, {}, {}}};
}

QVector<SweptTrace> AudioAnalyzer::sweep(quint64 number) const
{
    NoiseSource random(m_seed, number, 0);
    QVector<double> levels(m_samples);
    const double phase = std::fmod(swellRate * double(number), 2.0 * std::acos(-1.0));
    for (int i = 0; i < m_samples; ++i) {
        const double frequency = first + i * m_step;
        const double harmonic = std::max(1.0, std::round(frequency / tone));
        const double away = (frequency - tone * harmonic) / lineWidth;
        const double power = std::pow(10.0, -2.0 - 0.25 * harmonic + 0.4 * std::sin(phase + harmonic));
        const double floor = noise * (random.uniform() + quietestNoise) / std::sqrt(frequency / first);
        levels[i] = 10.0 * std::log10(power * std::exp(-away * away) + floor);
    }
    return {{QStringLiteral("spectrum"), levels}};
}

SweepTimes AudioAnalyzer::times() const
{
    return SweepTimes::atRate(m_rate);
}

} // namespace simulation
