#pragma once

#include "simulator/Instrument.h"

namespace simulation {

// Backscatter of a single-mode fibre over distance: launch, splices, connectors with their reflections and
// dead zones, the open end, and the receiver's noise behind it; with the table of these events.
class FibreReflectometer : public Instrument
{
public:
    struct Event
    {
        double position;    // m
        double loss;        // dB
        double reflectance; // dB, NaN for none
        const char *kind;
        const char *name;
    };

    // 0 samples give empty sweeps.
    FibreReflectometer(int samples, quint64 seed, double sweepsPerSecond);

    QString serviceName() const override;
    QVector<Trace> traces() const override;
    QVector<SweptTrace> sweep(quint64 number) const override;
    SweepTimes times() const override;

    QVector<double> levels(quint64 sweep) const;
    double distanceStep() const { return m_step; }
    static QVector<Event> events();
    // Backscatter level before the events at a distance, in dB.
    static double levelBefore(double distance);

private:
    Trace eventTable() const;

    int m_samples;
    quint64 m_seed;
    double m_rate;
    double m_step;
    QVector<double> m_powers;
};

} // namespace simulation
