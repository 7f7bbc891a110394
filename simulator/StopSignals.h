#pragma once

#include <QObject>

class QSocketNotifier;

// Turns SIGINT and SIGTERM into a signal of the event loop. To be made before the bus starts its thread,
// which takes over the signals that are blocked.
class StopSignals : public QObject
{
    Q_OBJECT

public:
    explicit StopSignals(QObject *parent = nullptr);
    ~StopSignals() override;

signals:
    void stopRequested();

private:
    int m_descriptor = -1;
    QSocketNotifier *m_notifier = nullptr;
};
