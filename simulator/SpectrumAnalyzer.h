#pragma once

#include "simulator/Instrument.h"

namespace simulation {

// A receiver band of 300 MHz: thermal noise behind the resolution filter, steady carriers with phase noise,
// blocks of digital modulation, a carrier that wanders, another that comes in bursts, and a slow drift of all
// of them.
class SpectrumAnalyzer : public Instrument
{
public:
    struct Carrier
    {
        double frequency; // Hz
        double level;     // dBm
    };

    // 0 samples give empty sweeps. The resolution filter is always 10/3 samples wide, as an instrument
    // couples it.
    SpectrumAnalyzer(int samples, quint64 seed, double sweepsPerSecond);

    QString serviceName() const override;
    QVector<Trace> traces() const override;
    QVector<SweptTrace> sweep(quint64 number) const override;
    SweepTimes times() const override;

    QVector<double> levels(quint64 sweep) const;
    int samples() const { return m_samples; }
    double firstFrequency() const;
    double frequencyStep() const { return m_step; }
    // The mean level of the receiver's own noise in dBm.
    double noiseLevel() const;
    double wanderingFrequency(quint64 sweep) const;
    static QVector<Carrier> steadyCarriers();

private:
    void addCarrier(const Carrier &carrier, QVector<double> *amplitudes) const;
    void addPhaseNoise(const Carrier &carrier, QVector<double> *powers) const;
    QVector<double> blockDensities() const; // mW/Hz
    double resolutionBandwidth() const;
    double driftGain(quint64 sweep) const;
    bool isBurstOn(quint64 sweep) const;
    int indexOf(double frequency) const;

    int m_samples;
    quint64 m_seed;
    double m_rate;
    double m_step;
    double m_noisePower;
    QVector<double> m_amplitudes;
    QVector<double> m_powers;
};

} // namespace simulation
