#pragma once

#include "platform/bus/BusPublisher.h"
#include "simulator/Instrument.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <memory>
#include <optional>

// Publishes one instrument on the bus, sweep by sweep.
class InstrumentService : public QObject
{
    Q_OBJECT

public:
    explicit InstrumentService(std::unique_ptr<simulation::Instrument> instrument, QObject *parent = nullptr);

    QString name() const { return m_instrument->serviceName(); }
    const simulation::Instrument &instrument() const { return *m_instrument; }

    // All items are there before the service appears on the bus, so that clients find them with their first
    // request. With `held` that sweep stays; otherwise sweeps run from number 0. False when the bus does not
    // take the service.
    bool start(std::optional<quint64> held);

signals:
    void sweepPublished(quint64 number, const QVector<simulation::SweptTrace> &traces);

private:
    void advance();
    void waitForNextSweep();
    void publishTrace(const simulation::Trace &trace);
    // Of a recording that grows also the sweeps that are missing before it.
    void publishSweep(quint64 number);

    std::unique_ptr<simulation::Instrument> m_instrument;
    BusPublisher m_publisher;
    simulation::SweepTimes m_times;
    quint64 m_next = 0;  // the sweep after the one that is published
    double m_step = 0.0; // between the samples of a recording that grows
    QElapsedTimer m_clock;
    QTimer m_timer;
};
