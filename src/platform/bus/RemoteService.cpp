#include "platform/bus/RemoteService.h"

#include "platform/bus/BusLimits.h"
#include "platform/bus/BusLink.h"
#include "platform/bus/BusName.h"
#include "platform/bus/ServiceFeed.h"

#include <dbus/dbus.h>

#include <algorithm>

namespace {

using std::chrono::milliseconds;

constexpr milliseconds late(2000);
// A call may have been swallowed; the answers to all of them count.
constexpr milliseconds firstRepeat(10000);
constexpr milliseconds longestRepeat(300000);
constexpr milliseconds shortestRepeat(1000);

} // namespace

RemoteService::RemoteService(const QString &serviceName, std::shared_ptr<ServiceFeed> feed)
    : m_serviceName(serviceName)
    , m_busName(graph::busName(serviceName))
    , m_path(graph::busPath(m_busName).toLatin1())
    , m_feed(std::move(feed))
{
    m_newsRule = "type='signal',interface='" + QByteArray(graph::itemsInterface) + "',path='" + m_path + '\'';
    m_ownerRule = "type='signal',sender='" DBUS_SERVICE_DBUS "',interface='" DBUS_INTERFACE_DBUS
                  "',member='NameOwnerChanged',arg0='" +
                  m_busName.toLatin1() + '\'';
}

RemoteService::~RemoteService() = default;

void RemoteService::ask()
{
    if (link()->isOpen())
        fetch();
    else
        link()->lookNow();
}

void RemoteService::handleOpened()
{
    if (!m_assemblies)
        m_assemblies.emplace(link()->unfinishedBytes());
    link()->addMatch(m_newsRule);
    link()->addMatch(m_ownerRule);
    fetch();
}

void RemoteService::handleUnreachable(const QString &why)
{
    m_feed->setStatus(ServiceFeed::NoBus, why);
    link()->wake();
}

void RemoteService::handleLost()
{
    // On another bus the same name may belong to someone else.
    forgetOwner();
    m_isAsking = false;
    m_isToAskAgain = false;
    m_feed->setStatus(ServiceFeed::Asking);
}

void RemoteService::handleRemoved()
{
    link()->removeMatch(m_newsRule);
    link()->removeMatch(m_ownerRule);
}

bool RemoteService::handleMessage(DBusMessage *message)
{
    if (dbus_message_get_type(message) != DBUS_MESSAGE_TYPE_SIGNAL)
        return false;
    if (dbus_message_is_signal(message, DBUS_INTERFACE_DBUS, "NameOwnerChanged")) {
        handleOwnerChanged(message);
        return false; // others may follow the same name
    }
    if (!dbus_message_has_path(message, m_path.constData()))
        return false;
    if (m_owner.isEmpty() || m_owner != dbus_message_get_sender(message))
        return true;
    graph::ItemNews news = graph::itemNews(message);
    if (news.kind == graph::ItemNews::None)
        return true;
    takeNews(std::move(news));
    if (m_feed->items().hasChanges())
        link()->wake();
    return true;
}

RemoteService::TimePoint RemoteService::handleTime(TimePoint now)
{
    if (m_assemblies)
        m_assemblies->removeStale(now);
    if (m_isToAskAgain && now >= m_askAgain)
        fetch();
    if (!m_isAsking)
        return m_isToAskAgain ? m_askAgain : TimePoint::max();
    if (now >= m_askAgain) {
        const milliseconds wait = std::min(2 * m_wait, longestRepeat);
        fetch();
        m_wait = wait;
        m_askAgain = now + wait;
    }
    if (m_feed->status().isLate)
        return m_askAgain;
    if (now < m_asked + late)
        return m_asked + late;
    m_feed->setLate();
    link()->wake();
    return m_askAgain;
}

void RemoteService::fetch()
{
    const TimePoint now = Clock::now();
    if (!m_isAsking)
        m_asked = now;
    m_isAsking = true;
    m_isToAskAgain = false;
    m_wait = firstRepeat;
    m_askAgain = now + m_wait;
    link()->call(graph::itemsRequest(m_busName), this, [this](DBusMessage *answer) { handleAnswer(answer); });
}

void RemoteService::handleAnswer(DBusMessage *message)
{
    link()->forgetCalls(this);
    m_isAsking = false;
    const auto isWanted = [this](const QString &itemName) { return m_feed->items().isWanted(itemName); };
    const auto answer = dbus_message_get_type(message) == DBUS_MESSAGE_TYPE_METHOD_RETURN
                            ? graph::itemsAnswer(message, isWanted)
                            : std::nullopt;
    if (answer) {
        takeAnswer(message, *answer);
        m_feed->setStatus(ServiceFeed::Answered);
    } else if (dbus_message_get_type(message) == DBUS_MESSAGE_TYPE_METHOD_RETURN) {
        const QString text = QStringLiteral("answers with \"%1\" which are no items")
                                 .arg(QString::fromLatin1(dbus_message_get_signature(message)));
        m_feed->setStatus(ServiceFeed::Failed, text);
    } else if (dbus_message_is_error(message, DBUS_ERROR_SERVICE_UNKNOWN) ||
               dbus_message_is_error(message, DBUS_ERROR_NAME_HAS_NO_OWNER) ||
               dbus_message_is_error(message, DBUS_ERROR_NO_REPLY)) {
        m_feed->setStatus(ServiceFeed::Absent);
    } else {
        const char *why = nullptr;
        dbus_message_get_args(message, nullptr, DBUS_TYPE_STRING, &why, DBUS_TYPE_INVALID);
        const QString text = QString::fromUtf8(why ? why : dbus_message_get_error_name(message));
        m_feed->setStatus(ServiceFeed::Failed, QLatin1String("has no items: ") + text.left(200));
    }
    link()->wake();
}

void RemoteService::takeAnswer(DBusMessage *message, const graph::ItemsAnswer &answer)
{
    if (m_owner != dbus_message_get_sender(message))
        forgetOwner();
    m_owner = dbus_message_get_sender(message);
    m_serial = answer.serial;
    m_assemblies->clear();
    if (answer.isCut)
        judge(QString(), ItemStore::NoRoom);
    if (answer.malformed > 0)
        judge(QString(), ItemStore::Misfit);
    ItemStore &items = m_feed->items();
    for (const QString &itemName : answer.later)
        judge(itemName, items.makeVector(itemName));
    for (auto it = answer.items.values.cbegin(); it != answer.items.values.cend(); ++it)
        judge(it.key(), items.setValue(it.key(), it.value()));
    for (auto it = answer.items.vectors.cbegin(); it != answer.items.vectors.cend(); ++it)
        judge(it.key(), items.setVector(it.key(), it.value()));
}

void RemoteService::handleOwnerChanged(DBusMessage *message)
{
    const char *name = nullptr;
    const char *former = nullptr;
    const char *present = nullptr;
    if (!dbus_message_has_sender(message, DBUS_SERVICE_DBUS) ||
        !dbus_message_get_args(message, nullptr, DBUS_TYPE_STRING, &name, DBUS_TYPE_STRING, &former,
                               DBUS_TYPE_STRING, &present, DBUS_TYPE_INVALID) ||
        m_busName != QLatin1String(name))
        return;
    if (m_owner == former)
        forgetOwner();
    // A call may have had the new owner's answer before this news of it.
    if (*present && m_owner != present) {
        if (!m_isAsking)
            m_feed->setStatus(ServiceFeed::Asking);
        link()->forgetCalls(this);
        fetch();
    } else if (!*present && !m_isAsking) {
        m_feed->setStatus(ServiceFeed::Absent);
    }
}

void RemoteService::takeNews(graph::ItemNews news)
{
    ItemStore &items = m_feed->items();
    // Arrays that follow an answer carry the answer's own serial.
    if (news.serial < m_serial)
        return;
    switch (news.kind) {
    case graph::ItemNews::Value:
        if (news.value.isValid())
            judge(news.itemName, items.setValue(news.itemName, news.value));
        break;
    case graph::ItemNews::ArrayPart:
        takePart(&news);
        break;
    case graph::ItemNews::ArrayAppended:
        if (news.serial > m_serial)
            takeAppended(news);
        break;
    default:
        complain(Complaints::MalformedArrays,
                 QStringLiteral("sends arrays that are no whole number of doubles or lack a part"));
    }
}

void RemoteService::takePart(graph::ItemNews *news)
{
    switch (m_assemblies->add(news)) {
    case ArrayAssemblies::Complete:
        judge(news->itemName, m_feed->items().setVector(news->itemName, news->elements));
        break;
    case ArrayAssemblies::Malformed:
        judge(QString(), ItemStore::Misfit);
        break;
    case ArrayAssemblies::NoRoom:
        judge(news->itemName, ItemStore::NoRoom);
        break;
    case ArrayAssemblies::Unfinished:
        break;
    }
}

// Something was lost when the elements do not go to the end: the items are asked for again, at a bounded rate.
void RemoteService::takeAppended(const graph::ItemNews &news)
{
    const ItemStore::Outcome outcome =
        m_feed->items().append(news.itemName, news.dropped, news.offset, news.elements);
    if (outcome != ItemStore::Misfit) {
        judge(news.itemName, outcome);
    } else if (!m_isAsking && !m_isToAskAgain) {
        m_isToAskAgain = true;
        m_askAgain = std::max(Clock::now(), m_asked + shortestRepeat);
    }
}

void RemoteService::judge(const QString &itemName, ItemStore::Outcome outcome)
{
    switch (outcome) {
    case ItemStore::Taken:
        break;
    case ItemStore::WrongKind:
        complain(Complaints::MixedKinds,
                 QStringLiteral("published both a value and an array as \"%1\"").arg(itemName.left(60)));
        break;
    case ItemStore::NoRoom:
        complain(Complaints::NoRoom,
                 QStringLiteral("publishes more than is kept of one service%1")
                     .arg(itemName.isEmpty() ? itemName : QLatin1String(", such as ") + itemName.left(60)));
        break;
    case ItemStore::Misfit:
        complain(Complaints::MalformedArrays,
                 QStringLiteral("sends arrays that are no whole number of doubles or lack a part"));
        break;
    }
}

void RemoteService::forgetOwner()
{
    m_owner.clear();
    if (m_assemblies)
        m_assemblies->clear();
    m_feed->items().forgetUnwatched();
}

void RemoteService::complain(Complaints::Kind kind, const QString &text)
{
    if (!m_complaints.isDue(kind))
        return;
    m_feed->addNote(text);
    link()->wake();
}
