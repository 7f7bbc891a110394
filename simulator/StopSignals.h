#pragma once

#include <QObject>

#include <memory>

class QSocketNotifier;

// Turns SIGINT, SIGTERM and SIGHUP into a signal of the event loop, so that a program ends in order. Signals count from
// the construction on, which needs no application object yet. The second one of a kind ends the process at once.
class StopSignals : public QObject
{
    Q_OBJECT

public:
    explicit StopSignals(QObject *parent = nullptr);
    ~StopSignals() override;

    // Needs the application object. A signal that came earlier is reported as soon as the event loop runs.
    void listen();

signals:
    void stopRequested();

private:
    std::unique_ptr<QSocketNotifier> m_notifier;
};
