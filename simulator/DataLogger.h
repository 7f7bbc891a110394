#pragma once

#include "simulator/Instrument.h"

namespace simulation {

// Four channels of a test bench on which a motor runs now and then: supply voltage, current, speed and
// temperature of the winding. Each sweep is the next piece of one long recording.
class DataLogger : public Instrument
{
public:
    // `samples` of each channel in each sweep, one after the other; 0 gives empty sweeps.
    DataLogger(int samples, quint64 seed, double sweepsPerSecond);

    QString serviceName() const override;
    QVector<Trace> traces() const override;
    QVector<SweptTrace> sweep(quint64 number) const override;
    SweepTimes times() const override;
    int capacity() const override;

private:
    int m_samples;
    quint64 m_seed;
    double m_rate;
    double m_step; // s
    double m_phase;
};

} // namespace simulation
