#include "platform/bus/BusCourier.h"

#include "platform/bus/BusLog.h"
#include "platform/bus/BusRecipient.h"

#include <QCoreApplication>
#include <QEvent>
#include <QTimerEvent>

#include <algorithm>

namespace {

constexpr int frame = 16;          // ms
constexpr int budget = 6;          // ms of a frame; one slow reader of an item may take longer
constexpr int longestWaits = 1800; // ms, so that a page is there after 2 s with all else that it does

QEvent::Type wakeEvent()
{
    static const int type = QEvent::registerEventType();
    return QEvent::Type(type);
}

} // namespace

BusCourier::BusCourier(const BusPatience &patience)
    : m_allowance(longestWaits)
    , m_thread(patience, [this] {
        if (!m_isWoken.exchange(true))
            QCoreApplication::postEvent(this, new QEvent(wakeEvent()));
    })
{
}

BusCourier::~BusCourier() = default;

void BusCourier::add(BusRecipient *recipient)
{
    m_recipients.append(recipient);
}

void BusCourier::remove(BusRecipient *recipient)
{
    m_recipients.removeAll(recipient);
}

int BusCourier::allowance() const
{
    const qint64 regained = m_sinceWait.isValid() ? m_sinceWait.elapsed() : 0;
    return int(std::min<qint64>(longestWaits, m_allowance + regained) * 15 / 16);
}

void BusCourier::takeFromAllowance(int waited)
{
    const qint64 regained = m_sinceWait.isValid() ? std::max<qint64>(0, m_sinceWait.elapsed() - waited) : 0;
    m_allowance = std::max(0, int(std::min<qint64>(longestWaits, m_allowance + regained)) - waited);
    m_sinceWait.start();
}

bool BusCourier::event(QEvent *event)
{
    if (event->type() != wakeEvent())
        return QObject::event(event);
    m_hasMore = true;
    if (!m_pause.isActive())
        deliverInTime();
    return true;
}

void BusCourier::timerEvent(QTimerEvent *)
{
    m_pause.stop();
    if (m_hasMore)
        deliver();
}

// At once when the last time is long ago, so that rare changes need no timer.
void BusCourier::deliverInTime()
{
    if (m_notBefore.hasExpired())
        deliver();
    else
        m_pause.start(int(m_notBefore.remainingTime()) + 1, this);
}

void BusCourier::deliver()
{
    QElapsedTimer clock;
    clock.start();
    m_hasMore = false;
    // Not before: what comes during the pause need not wake anybody.
    m_isWoken = false;
    // Set before: a reader of an item may run an event loop of its own.
    m_notBefore.setRemainingTime(frame);
    for (const QString &line : m_thread.takeLines())
        qCWarning(busLog) << qUtf8Printable(line);
    if (!deliverWithin(budget))
        m_hasMore = true;
    // What takes long is to leave as much time to others.
    const qint64 taken = clock.elapsed();
    if (taken > frame)
        m_notBefore.setRemainingTime(std::min<qint64>(taken, 1000));
    // Other events first, even when no time is left.
    if (m_hasMore)
        m_pause.start(int(m_notBefore.remainingTime()) + 1, this);
}

// False when something is left.
bool BusCourier::deliverWithin(int time)
{
    const QDeadlineTimer end(time);
    for (int i = 0; i < m_recipients.size(); ++i) {
        m_next = (m_next + 1) % m_recipients.size();
        if (!m_recipients.at(m_next)->deliver(end))
            return false;
    }
    return true;
}
