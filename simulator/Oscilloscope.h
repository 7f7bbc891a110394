#pragma once

#include "simulator/Instrument.h"

namespace simulation {

// Two channels over one millisecond: the voltage of an amplitude-modulated sine with noise, and a train of
// current pulses of varying width whose edges overshoot and ring. The current probe is overloaded now and
// then: samples of that time are missing from the sweeps.
class Oscilloscope : public Instrument
{
public:
    // 0 samples give empty sweeps.
    Oscilloscope(int samples, quint64 seed, double sweepsPerSecond);

    QString serviceName() const override;
    QVector<Trace> traces() const override;
    QVector<SweptTrace> sweep(quint64 number) const override;
    SweepTimes times() const override;

    QVector<double> modulatedSine(quint64 sweep) const;
    // All samples, including those that are missing from the sweeps.
    QVector<double> pulseTrain(quint64 sweep) const;
    double timeStep() const { return m_step; }

private:
    int m_samples;
    quint64 m_seed;
    double m_rate;
    double m_step;
};

} // namespace simulation
