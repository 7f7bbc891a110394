#include "simulator/SpectrumAnalyzer.h"

#include "common/SafeInteger.h"
#include "simulator/NoiseSource.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace simulation {

namespace {

constexpr double pi = 3.14159265358979323846;
constexpr double first = 700e6;
constexpr double span = 300e6;
// Thermal noise of a matched input at room temperature, and what the receiver adds to it.
constexpr double noiseDensity = -174.0 + 14.0;
constexpr double samplesPerBandwidth = 10.0 / 3.0;
// Sweeps averaged in power before the logarithm, so that the noise spreads as an averaged detector shows it.
constexpr int looks = 4;
// Beyond this many samples the resolution filter is more than 90 dB down.
constexpr int filterReach = 9;
// Broadband noise of the oscillators: 1/Hz relative to the carrier up to the corner, then 20 dB per decade.
constexpr double phaseNoise = 4e-11;
constexpr double phaseNoiseCorner = 1e6;

constexpr double wanderCentre = 930e6;
constexpr double wanderReach = 7e6;
constexpr double wanderPeriod = 700.0;
constexpr double wanderLevel = -47.0;
constexpr SpectrumAnalyzer::Carrier burst = {962e6, -58.0};
constexpr quint64 burstSlot = 6;
constexpr double driftPeriod = 1500.0;

struct Block
{
    double centre;
    double width;   // Hz between the half-power edges
    double density; // dBm/Hz
    double rollOff; // part of the width taken by one edge
    double ripple;  // dB
};

constexpr std::array<Block, 8> blocks = {{{763e6, 9.0e6, -118.0, 0.02, 0.4},
                                          {783e6, 9.0e6, -126.0, 0.02, 0.6},
                                          {796e6, 9.0e6, -112.0, 0.02, 0.3},
                                          {806e6, 9.0e6, -114.0, 0.02, 0.5},
                                          {816e6, 9.0e6, -113.0, 0.02, 0.4},
                                          {854e6, 6.9e6, -108.0, 0.15, 0.0},
                                          {862e6, 6.9e6, -109.0, 0.15, 0.0},
                                          {870e6, 6.9e6, -116.0, 0.15, 0.0}}};

double decibels(double power)
{
    return 10.0 * std::log10(power);
}

double power(double decibelValue)
{
    return std::pow(10.0, 0.1 * decibelValue);
}

// Voltage of a Gaussian filter `offset` samples from its centre; half the power at half the bandwidth.
double filterVoltage(double offset)
{
    const double relative = offset / samplesPerBandwidth;
    return std::exp2(-2.0 * relative * relative);
}

// 1 inside, 0 outside, half at the edge, with raised-cosine edges.
double blockShape(const Block &block, double frequency)
{
    const double edge = block.rollOff * block.width;
    const double outside = std::abs(frequency - block.centre) - 0.5 * block.width;
    if (outside <= -0.5 * edge)
        return 1.0;
    return outside >= 0.5 * edge ? 0.0 : 0.5 - 0.5 * std::sin(pi * outside / edge);
}

using Filter = std::array<double, 2 * filterReach + 1>;

// The resolution filter over neighbouring samples, leaving the power of white noise as it is.
Filter noiseFilter()
{
    Filter taps = {};
    double norm = 0.0;
    for (size_t i = 0; i < taps.size(); ++i) {
        taps[i] = filterVoltage(double(i) - filterReach);
        norm += taps[i] * taps[i];
    }
    for (double &tap : taps)
        tap /= std::sqrt(norm);
    return taps;
}

// Noise density as the filter lets it through: the edges of a block are never steeper than its flanks.
QVector<double> filtered(const QVector<double> &powers)
{
    const Filter taps = noiseFilter();
    QVector<double> result(powers.size(), 0.0);
    for (int i = 0; i < powers.size(); ++i) {
        for (int k = -filterReach; k <= filterReach; ++k) {
            const double tap = taps[size_t(k + filterReach)];
            result[i] += tap * tap * powers.value(i + k, 0.0);
        }
    }
    return result;
}

// Adds |carrier + noise|^2 of one look to `sums`. White complex noise runs through the resolution filter, so
// that neighbours are as much alike as the filter makes them.
void addLook(NoiseSource noise, const QVector<double> &amplitudes, const QVector<double> &powers,
             QVector<double> *sums)
{
    const Filter taps = noiseFilter();
    const int count = amplitudes.size();
    std::vector<float> real(size_t(count) + taps.size());
    std::vector<float> imaginary(real.size());
    for (size_t i = 0; i < real.size(); ++i) {
        real[i] = float(noise.gaussian());
        imaginary[i] = float(noise.gaussian());
    }
    for (int i = 0; i < count; ++i) {
        double inPhase = 0.0;
        double quadrature = 0.0;
        for (size_t k = 0; k < taps.size(); ++k) {
            inPhase += taps[k] * double(real[size_t(i) + k]);
            quadrature += taps[k] * double(imaginary[size_t(i) + k]);
        }
        const double deviation = std::sqrt(0.5 * powers.at(i));
        inPhase = inPhase * deviation + amplitudes.at(i);
        quadrature *= deviation;
        (*sums)[i] += inPhase * inPhase + quadrature * quadrature;
    }
}

} // namespace

SpectrumAnalyzer::SpectrumAnalyzer(int samples, quint64 seed, double sweepsPerSecond)
    : m_samples(std::max(samples, 0))
    , m_seed(seed)
    , m_rate(sweepsPerSecond)
    , m_step(m_samples > 1 ? span / (m_samples - 1) : span)
    , m_noisePower(power(noiseDensity) * resolutionBandwidth())
    , m_amplitudes(m_samples, 0.0)
    , m_powers(m_samples, 0.0)
{
    for (const Carrier &carrier : steadyCarriers()) {
        addCarrier(carrier, &m_amplitudes);
        addPhaseNoise(carrier, &m_powers);
    }
    const QVector<double> blockPowers = filtered(blockDensities());
    for (int i = 0; i < m_samples; ++i)
        m_powers[i] += blockPowers.at(i) * resolutionBandwidth();
}

QString SpectrumAnalyzer::serviceName() const
{
    return QStringLiteral("analyzer");
}

QVector<Trace> SpectrumAnalyzer::traces() const
{
    TraceDescription description;
    description.label = QStringLiteral("Spectrum");
    description.xLabel = QStringLiteral("Frequency");
    description.yLabel = QStringLiteral("Level");
    description.xUnits = QStringLiteral("Hz");
    description.yUnits = QStringLiteral("dBm");
    description.xRangeBegin = first;
    description.xRangeEnd = first + span;
    description.yRangeBegin = 10.0 * std::floor((noiseLevel() - 10.0) / 10.0);
    description.yRangeEnd = -20.0;
    description.equallySpaced = true;
    description.xFirst = first;
    description.xIncrement = m_step;
    return {{QStringLiteral("spectrum"), description, {}, {}}};
}

QVector<SweptTrace> SpectrumAnalyzer::sweep(quint64 number) const
{
    return {{QStringLiteral("spectrum"), levels(number)}};
}

SweepTimes SpectrumAnalyzer::times() const
{
    return SweepTimes::atRate(m_rate);
}

QVector<double> SpectrumAnalyzer::levels(quint64 sweep) const
{
    QVector<double> amplitudes = m_amplitudes;
    QVector<double> powers = m_powers;
    const Carrier wandering = {wanderingFrequency(sweep), wanderLevel};
    addCarrier(wandering, &amplitudes);
    addPhaseNoise(wandering, &powers);
    if (isBurstOn(sweep)) {
        addCarrier(burst, &amplitudes);
        addPhaseNoise(burst, &powers);
    }
    // The drift is the sources': the receiver's own noise stays.
    const double gain = driftGain(sweep);
    for (int i = 0; i < m_samples; ++i) {
        amplitudes[i] *= gain;
        powers[i] = powers.at(i) * gain * gain + m_noisePower;
    }
    QVector<double> sums(m_samples, 0.0);
    for (int look = 0; look < looks; ++look)
        addLook(NoiseSource(m_seed, sweep, quint64(look)), amplitudes, powers, &sums);
    for (double &sum : sums)
        sum = decibels(sum / looks);
    return sums;
}

double SpectrumAnalyzer::firstFrequency() const
{
    return first;
}

double SpectrumAnalyzer::noiseLevel() const
{
    return decibels(m_noisePower);
}

double SpectrumAnalyzer::wanderingFrequency(quint64 sweep) const
{
    const double phase = NoiseSource(m_seed, 0, 100).uniform();
    return wanderCentre +
           wanderReach * std::sin(2.0 * pi * (std::fmod(double(sweep), wanderPeriod) / wanderPeriod + phase));
}

QVector<SpectrumAnalyzer::Carrier> SpectrumAnalyzer::steadyCarriers()
{
    return {{721.4e6, -34.0}, {737.0e6, -63.0}, {740.0e6, -71.0}, {889.5e6, -52.0}, {987.5e6, -41.0}};
}

void SpectrumAnalyzer::addCarrier(const Carrier &carrier, QVector<double> *amplitudes) const
{
    const double voltage = std::sqrt(power(carrier.level));
    const double place = (carrier.frequency - first) / m_step;
    const int begin = std::max(0, indexOf(carrier.frequency) - filterReach);
    const int end = std::min(m_samples, indexOf(carrier.frequency) + filterReach + 1);
    for (int i = begin; i < end; ++i)
        (*amplitudes)[i] += voltage * filterVoltage(i - place);
}

void SpectrumAnalyzer::addPhaseNoise(const Carrier &carrier, QVector<double> *powers) const
{
    const double top = power(carrier.level) * phaseNoise * resolutionBandwidth();
    for (int i = 0; i < m_samples; ++i) {
        const double offset = (first + i * m_step - carrier.frequency) / phaseNoiseCorner;
        (*powers)[i] += top / (1.0 + offset * offset);
    }
}

QVector<double> SpectrumAnalyzer::blockDensities() const
{
    QVector<double> densities(m_samples, 0.0);
    for (const Block &block : blocks) {
        const double top = power(block.density);
        for (int i = 0; i < m_samples; ++i) {
            const double frequency = first + i * m_step;
            const double shape = blockShape(block, frequency);
            if (shape <= 0.0)
                continue;
            const double ripple =
                block.ripple * std::sin(6.0 * pi * (frequency - block.centre) / block.width);
            densities[i] += top * shape * power(ripple);
        }
    }
    return densities;
}

double SpectrumAnalyzer::resolutionBandwidth() const
{
    return samplesPerBandwidth * m_step;
}

double SpectrumAnalyzer::driftGain(quint64 sweep) const
{
    const double phase = NoiseSource(m_seed, 0, 101).uniform();
    const double drift =
        0.4 * std::sin(2.0 * pi * (std::fmod(double(sweep), driftPeriod) / driftPeriod + phase));
    return std::sqrt(power(drift));
}

bool SpectrumAnalyzer::isBurstOn(quint64 sweep) const
{
    return NoiseSource(m_seed, sweep / burstSlot, 102).uniform() < 0.4;
}

int SpectrumAnalyzer::indexOf(double frequency) const
{
    return graph::roundedIndex((frequency - first) / m_step);
}

} // namespace simulation
