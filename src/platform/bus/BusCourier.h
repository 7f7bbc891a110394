#pragma once

#include "platform/bus/BusThread.h"

#include <QBasicTimer>
#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QList>
#include <QObject>
#include <QPointer>

#include <atomic>

class BusClient;

// Brings what the bus thread has received to the clients, on the application's thread: about once a frame, and
// for a bounded part of its time, so that timers, input and painting have theirs however much comes.
class BusCourier : public QObject
{
    Q_OBJECT

public:
    explicit BusCourier(const BusPatience &patience);
    ~BusCourier() override;

    BusThread &thread() { return m_thread; }
    void add(BusClient *client);
    void remove(BusClient *client);

    // How long the caller may wait for a service, in milliseconds. All waits of a page share 1.8 s, most of what is
    // left goes to the first, and it grows back while nobody waits.
    int allowance() const;
    void takeFromAllowance(int waited);

protected:
    bool event(QEvent *event) override;
    void timerEvent(QTimerEvent *event) override;

private:
    void deliverInTime();
    void deliver();
    bool deliverWithin(int time);

    QList<QPointer<BusClient>> m_clients;
    int m_next = 0;
    bool m_hasMore = false;
    QBasicTimer m_pause;
    QDeadlineTimer m_notBefore{0};
    QElapsedTimer m_sinceWait;
    int m_allowance;
    std::atomic<bool> m_isWoken{false};
    BusThread m_thread; // last: it ends first
};
