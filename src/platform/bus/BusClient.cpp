#include "platform/bus/BusClient.h"

#include "platform/bus/BusCourier.h"
#include "platform/bus/BusLog.h"
#include "platform/bus/BusSources.h"
#include "platform/bus/ORNClientItem.h"
#include "platform/bus/RemoteService.h"

#include <QElapsedTimer>

#include <algorithm>

namespace {

// A wait that was cut shorter, by those for other services, says nothing of this one.
constexpr int tellingWait = 1000; // ms

} // namespace

BusClient::BusClient(const QString &serviceName, BusSources &sources)
    : m_serviceName(serviceName)
    , m_sources(sources)
{
}

BusClient::~BusClient()
{
    unfollow();
}

ORNClientItem *BusClient::item(const QString &itemName)
{
    if (ORNClientItem *known = m_items.value(itemName))
        return known;
    m_wanted.insert(itemName);
    if (m_feed) {
        if (const auto item = m_feed->items().watch(itemName)) {
            m_wanted.remove(itemName);
            if (item->isVector)
                setVector(itemName, item->vector);
            else
                setValue(itemName, item->value);
        }
    }
    return m_items.value(itemName);
}

bool BusClient::isServiceThere() const
{
    return m_source == Process || (m_feed && m_feed->status().state == ServiceFeed::Answered);
}

void BusClient::connectToService()
{
    if (m_source == Process)
        return;
    if (m_source == None) {
        if (const BusItems *items = m_sources.itemsInProcess(m_serviceName)) {
            m_source = Process;
            setItems(*items);
        } else {
            follow();
            await();
        }
        return;
    }
    const ServiceFeed::Status status = m_feed->status();
    if (status.state == ServiceFeed::Absent || status.state == ServiceFeed::NoBus) {
        // It may be there by now, and the news of it on the way.
        m_feed->setStatus(ServiceFeed::Asking);
        m_sources.courier().thread().post([remote = m_remote](BusLink &) { remote->ask(); });
        // A bus that took its time before is not waited for again.
        if (status.state == ServiceFeed::NoBus && m_isOverdue)
            return;
    } else if (status.state != ServiceFeed::Asking || status.isLate) {
        // Nobody is to start with values that have been replaced.
        deliver(QDeadlineTimer(QDeadlineTimer::Forever));
        return;
    }
    await();
}

void BusClient::enterProcess()
{
    unfollow();
    m_source = Process;
}

void BusClient::leaveProcess()
{
    m_source = None;
}

void BusClient::setValue(const QString &itemName, const QVariant &value)
{
    if (auto *item = itemOfKind<ORNClientItem>(itemName)) {
        item->setValue(value);
        tellAdded(itemName);
    }
}

void BusClient::setVector(const QString &itemName, const QVector<double> &vector, qint64 appended)
{
    if (auto *item = itemOfKind<ORNVecDoubleClientItem>(itemName)) {
        if (appended > 0)
            emit arrayAppended(itemName, int(std::min<qint64>(appended, vector.size())));
        item->setVector(vector);
        tellAdded(itemName);
    }
}

bool BusClient::deliver(const QDeadlineTimer &end)
{
    if (!m_feed)
        return true;
    for (const QString &note : m_feed->takeNotes())
        qCWarning(busLog) << m_serviceName << qUtf8Printable(note);
    tellTrouble(m_feed->status(), false);
    // One round of changes after the other: a service that changes some items all the time does not keep the
    // others waiting. A reader of an item may call this, too, or make the client change its source.
    if (m_nextChange >= m_changes.size()) {
        m_nextChange = 0;
        m_changes = m_feed->items().takeChanges();
    }
    while (m_nextChange < m_changes.size()) {
        const ItemStore::Change change = m_changes.at(m_nextChange++);
        if (m_nextChange == m_changes.size()) {
            m_nextChange = 0;
            m_changes.clear();
        }
        apply(change);
        if (end.hasExpired())
            return m_nextChange >= m_changes.size();
    }
    return true;
}

void BusClient::setItems(const BusItems &items)
{
    // A copy: a listener may publish another change.
    const BusItems all = items;
    for (auto it = all.values.cbegin(); it != all.values.cend(); ++it)
        setValue(it.key(), it.value());
    for (auto it = all.vectors.cbegin(); it != all.vectors.cend(); ++it)
        setVector(it.key(), it.value());
}

void BusClient::follow()
{
    m_source = Bus;
    m_feed = std::make_shared<ServiceFeed>();
    for (auto it = m_items.cbegin(); it != m_items.cend(); ++it)
        m_feed->items().watch(it.key(), qobject_cast<ORNVecClientItem *>(it.value()));
    for (const QString &itemName : qAsConst(m_wanted))
        m_feed->items().watch(itemName);
    m_remote = std::make_shared<RemoteService>(m_serviceName, m_feed);
    BusCourier &courier = m_sources.courier();
    courier.add(this);
    courier.thread().post([remote = m_remote](BusLink &link) {
        remote->setLink(&link);
        link.add(remote);
    });
}

void BusClient::unfollow()
{
    m_source = None;
    m_changes.clear();
    m_nextChange = 0;
    if (!m_remote)
        return;
    m_feed.reset();
    BusCourier &courier = m_sources.courier();
    courier.remove(this);
    courier.thread().post([remote = std::move(m_remote)](BusLink &link) { link.remove(remote); });
    m_remote.reset();
}

void BusClient::await()
{
    BusCourier &courier = m_sources.courier();
    const int time = courier.allowance();
    QElapsedTimer clock;
    clock.start();
    const ServiceFeed::Status status = m_feed->waitFor(time);
    courier.takeFromAllowance(int(clock.elapsed()));
    m_isOverdue = status.state == ServiceFeed::Asking;
    tellTrouble(status, time >= tellingWait);
    deliver(QDeadlineTimer(QDeadlineTimer::Forever));
}

// At the start one line says why there are no items; that a service goes later is nothing unusual.
void BusClient::tellTrouble(const ServiceFeed::Status &status, bool hasWaited)
{
    if (m_isStartTold || (status.state == ServiceFeed::Asking && !status.isLate && !hasWaited))
        return;
    m_isStartTold = true;
    if (status.state == ServiceFeed::Answered)
        return;
    QString text = QStringLiteral("does not answer");
    if (status.state == ServiceFeed::NoBus)
        text = QLatin1String("cannot be reached, there is no session bus (dbus-run-session starts one): ") +
               status.text;
    else if (status.state == ServiceFeed::Absent)
        text = QStringLiteral("is not on the session bus");
    else if (status.state == ServiceFeed::Failed)
        text = status.text;
    qCWarning(busLog) << m_serviceName << qUtf8Printable(text);
}

void BusClient::apply(const ItemStore::Change &change)
{
    if (!change.item.isVector) {
        setValue(change.itemName, change.item.value);
        return;
    }
    const qint64 lost = change.appended - change.item.vector.size();
    if (lost > 0 && m_complaints.isDue(Complaints::LostElements))
        qCWarning(busLog) << m_serviceName << "appends faster than is looked at:" << lost << "elements of"
                          << change.itemName << "were dropped before";
    setVector(change.itemName, change.item.vector, change.appended);
}

// The item under that name, made when there is none; null, with one log line, when it is of another kind.
template <typename Item> Item *BusClient::itemOfKind(const QString &itemName)
{
    ORNClientItem *&item = m_items[itemName];
    if (!item)
        item = new Item(itemName, this);
    constexpr bool isValue = std::is_same_v<Item, ORNClientItem>;
    const bool isVector = qobject_cast<ORNVecClientItem *>(item);
    if (isVector != isValue)
        return static_cast<Item *>(item);
    if (!std::exchange(m_kindReported, true))
        qCWarning(busLog) << m_serviceName << "published both a value and an array as" << itemName;
    return nullptr;
}

void BusClient::tellAdded(const QString &itemName)
{
    if (m_wanted.remove(itemName))
        emit itemAdded(itemName);
}
