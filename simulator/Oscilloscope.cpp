#include "simulator/Oscilloscope.h"

#include "common/SafeInteger.h"
#include "simulator/NoiseSource.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace simulation {

namespace {

constexpr double pi = 3.14159265358979323846;
constexpr double window = 1e-3; // s, half of it before the trigger
constexpr double carrierFrequency = 20e3;
constexpr double modulationFrequency = 2.3e3;
constexpr double modulationDepth = 0.6;
constexpr double sineNoise = 0.012; // V
constexpr double pulsePeriod = 50e-6;
constexpr double highLevel = 3.3; // A
constexpr double pulseNoise = 0.015;
constexpr double edgeDecay = 0.25e-6; // s
constexpr double edgeRinging = 1.6e6; // Hz
// An edge has settled to better than the noise after this time.
constexpr double settled = 12.0 * edgeDecay;

struct Stretch
{
    double begin; // s after the start of the window
    double end;
};

// When the current probe is overloaded.
constexpr std::array<Stretch, 3> overloads = {{{184e-6, 221e-6}, {545e-6, 574e-6}, {782e-6, 790e-6}}};

double stepResponse(double seconds)
{
    if (seconds <= 0.0)
        return 0.0;
    if (seconds >= settled)
        return 1.0;
    return 1.0 - std::exp(-seconds / edgeDecay) * std::cos(2.0 * pi * edgeRinging * seconds);
}

TraceDescription channelDescription(const QString &label, const QString &quantity, const QString &unit,
                                    double step, double lowest, double highest)
{
    TraceDescription description;
    description.label = label;
    description.xLabel = QStringLiteral("Time");
    description.yLabel = quantity;
    description.xUnits = QStringLiteral("s");
    description.yUnits = unit;
    description.xSigDigs = 4;
    description.xRangeBegin = -0.5 * window;
    description.xRangeEnd = 0.5 * window;
    description.yRangeBegin = lowest;
    description.yRangeEnd = highest;
    description.equallySpaced = true;
    description.xFirst = -0.5 * window;
    description.xIncrement = step;
    return description;
}

} // namespace

Oscilloscope::Oscilloscope(int samples, quint64 seed, double sweepsPerSecond)
    : m_samples(std::max(samples, 0))
    , m_seed(seed)
    , m_rate(sweepsPerSecond)
    , m_step(m_samples > 1 ? window / (m_samples - 1) : window)
{
}

QString Oscilloscope::serviceName() const
{
    return QStringLiteral("scope");
}

QVector<Trace> Oscilloscope::traces() const
{
    return {{QStringLiteral("ch1"),
             channelDescription(QStringLiteral("Channel 1"), QStringLiteral("Voltage"), QStringLiteral("V"),
                                m_step, -2.0, 2.0),
             {},
             {}},
            {QStringLiteral("ch2"),
             channelDescription(QStringLiteral("Channel 2"), QStringLiteral("Current"), QStringLiteral("A"),
                                m_step, -2.0, 6.0),
             {},
             {}}};
}

QVector<SweptTrace> Oscilloscope::sweep(quint64 number) const
{
    QVector<double> current = pulseTrain(number);
    for (const Stretch &overload : overloads) {
        const int end = std::min(graph::truncatedIndex(overload.end / m_step), m_samples);
        for (int i = std::min(graph::truncatedIndex(overload.begin / m_step), end); i < end; ++i)
            current[i] = std::numeric_limits<double>::quiet_NaN();
    }
    return {{QStringLiteral("ch1"), modulatedSine(number)}, {QStringLiteral("ch2"), current}};
}

SweepTimes Oscilloscope::times() const
{
    return SweepTimes::atRate(m_rate);
}

QVector<double> Oscilloscope::modulatedSine(quint64 sweep) const
{
    NoiseSource noise(m_seed, sweep, 0);
    // The trigger holds the carrier; its modulation is free to run.
    const double jitter = 0.01 * noise.gaussian();
    const double modulationPhase =
        2.0 * pi * std::fmod(0.0371 * double(sweep % 1000000) + NoiseSource(m_seed, 0, 1).uniform(), 1.0);
    QVector<double> volts(m_samples);
    for (int i = 0; i < m_samples; ++i) {
        const double time = i * m_step - 0.5 * window;
        const double envelope =
            1.0 + modulationDepth * std::sin(2.0 * pi * modulationFrequency * time + modulationPhase);
        volts[i] =
            envelope * std::sin(2.0 * pi * carrierFrequency * time + jitter) + sineNoise * noise.gaussian();
    }
    return volts;
}

QVector<double> Oscilloscope::pulseTrain(quint64 sweep) const
{
    NoiseSource noise(m_seed, sweep, 2);
    QVector<double> volts(m_samples);
    int pulse = -1;
    double width = 0.0;
    for (int i = 0; i < m_samples; ++i) {
        const double time = i * m_step;
        const int number = int(time / pulsePeriod);
        if (number != pulse) {
            pulse = number;
            const double jitter = 0.5e-6 * NoiseSource(m_seed, sweep, 1000 + quint64(number)).gaussian();
            width =
                pulsePeriod * (0.5 + 0.25 * std::sin(0.7 * number + 0.05 * double(sweep % 1000000))) + jitter;
        }
        const double sinceEdge = time - number * pulsePeriod;
        volts[i] = highLevel * (stepResponse(sinceEdge) - stepResponse(sinceEdge - width)) +
                   pulseNoise * noise.gaussian();
    }
    return volts;
}

} // namespace simulation
