#pragma once

#include "simulator/Instrument.h"

namespace simulation {

// Levels of the band from 88 to 108 MHz, each sweep a row: three stations that fade, one that hops and one that moves
// to and fro.
class Spectrogram : public Instrument
{
public:
    // 0 samples give empty sweeps.
    Spectrogram(int samples, quint64 seed, double sweepsPerSecond);

    QString serviceName() const override;
    QVector<Trace> traces() const override;
    QVector<SweptTrace> sweep(quint64 number) const override;
    SweepTimes times() const override;

    // Where the station that hops is, in Hz.
    static double hoppingFrequency(quint64 sweep);

private:
    int m_samples;
    quint64 m_seed;
    double m_rate;
    double m_step; // Hz
};

} // namespace simulation
