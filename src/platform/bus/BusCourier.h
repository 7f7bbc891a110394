#pragma once

#include "platform/bus/BusThread.h"

#include <QBasicTimer>
#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QList>
#include <QObject>

#include <atomic>

class BusRecipient;

// Brings what the bus thread has received to its recipients, on the application's thread: about once a frame, and
// for a bounded part of its time, so that timers, input and painting have theirs however much comes.
class BusCourier : public QObject
{
    Q_OBJECT

public:
    explicit BusCourier(const BusPatience &patience);
    ~BusCourier() override;

    BusThread &thread() { return m_thread; }
    // Until it is removed.
    void add(BusRecipient *recipient);
    void remove(BusRecipient *recipient);

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

    QList<BusRecipient *> m_recipients;
    int m_next = 0;
    bool m_hasMore = false;
    QBasicTimer m_pause;
    QDeadlineTimer m_notBefore{0};
    QElapsedTimer m_sinceWait;
    int m_allowance;
    std::atomic<bool> m_isWoken{false};
    BusThread m_thread; // last: it ends first
};
