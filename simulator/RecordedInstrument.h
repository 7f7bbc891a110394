#pragma once

#include "simulator/Instrument.h"
#include "simulator/Recording.h"

namespace simulation {

// Recordings published as if they were measured now: at most one trace, one table of events and one of
// regions.
class RecordedInstrument : public Instrument
{
public:
    // Recorded sweeps play in their own time, or at `sweepsPerSecond` when that is above 0.
    RecordedInstrument(const QVector<Recording> &recordings, double sweepsPerSecond);

    // "trace", "events" or "regions".
    static QString prefixOf(RecordingKind kind);

    // Why these cannot be published together; empty when they can.
    static QString conflictOf(const QVector<Recording> &recordings);

    QString serviceName() const override;
    QVector<Trace> traces() const override;
    // Recorded sweeps begin again after the last one.
    QVector<SweptTrace> sweep(quint64 number) const override;
    SweepTimes times() const override;

private:
    const Recording *trace() const;

    QVector<Recording> m_recordings;
    double m_rate;
};

} // namespace simulation
