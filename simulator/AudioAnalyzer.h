#pragma once

#include "simulator/Instrument.h"

namespace simulation {

// A tone with harmonics that swell and fade over noise, from 20 Hz to 20 kHz.
class AudioAnalyzer : public Instrument
{
public:
    // 0 samples give empty sweeps.
    AudioAnalyzer(int samples, quint64 seed, double sweepsPerSecond);

    QString serviceName() const override;
    QVector<Trace> traces() const override;
    QVector<SweptTrace> sweep(quint64 number) const override;
    SweepTimes times() const override;

    static constexpr double tone = 440.0; // Hz

private:
    int m_samples;
    quint64 m_seed;
    double m_rate;
    double m_step; // Hz
};

} // namespace simulation
