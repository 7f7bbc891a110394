#include "platform/bus/PublishedObject.h"

#include "platform/bus/BusLimits.h"
#include "platform/bus/BusLink.h"
#include "platform/bus/BusName.h"
#include "platform/bus/ServiceFeed.h"

#include <dbus/dbus.h>

#include <algorithm>

namespace {

const char introspection[] = "<node><interface name=\"org.toskorn.Items\">"
                             "<method name=\"GetItems\">"
                             "<arg name=\"serial\" type=\"t\" direction=\"out\"/>"
                             "<arg name=\"values\" type=\"a{sv}\" direction=\"out\"/>"
                             "<arg name=\"arrays\" type=\"a{say}\" direction=\"out\"/>"
                             "<arg name=\"later\" type=\"as\" direction=\"out\"/></method>"
                             "<signal name=\"ValueChanged\"><arg name=\"serial\" type=\"t\"/>"
                             "<arg name=\"item\" type=\"s\"/><arg name=\"value\" type=\"v\"/></signal>"
                             "<signal name=\"ArrayChanged\"><arg name=\"serial\" type=\"t\"/>"
                             "<arg name=\"item\" type=\"s\"/><arg name=\"size\" type=\"t\"/>"
                             "<arg name=\"offset\" type=\"t\"/><arg name=\"part\" type=\"ay\"/></signal>"
                             "<signal name=\"ArrayAppended\"><arg name=\"serial\" type=\"t\"/>"
                             "<arg name=\"item\" type=\"s\"/><arg name=\"dropped\" type=\"t\"/>"
                             "<arg name=\"offset\" type=\"t\"/><arg name=\"part\" type=\"ay\"/></signal>"
                             "</interface></node>";

// The answer that fits into one message. Arrays beyond that are listed in `later`, values in `laterValues`.
graph::ItemsAnswer fittingAnswer(quint64 serial, const BusItems &items, QStringList *laterValues)
{
    graph::ItemsAnswer answer;
    answer.serial = serial;
    qint64 bytes = graph::maxAnsweredValueBytes;
    for (auto it = items.values.cbegin(); it != items.values.cend(); ++it) {
        bytes -= graph::sizeOfValue(it.value()) + graph::sizeOfText(it.key());
        if (bytes < 0)
            laterValues->append(it.key());
        else
            answer.items.values.insert(it.key(), it.value());
    }
    int room = graph::maxAnsweredElements;
    for (auto it = items.vectors.cbegin(); it != items.vectors.cend(); ++it) {
        if (it->size() > room) {
            answer.later.append(it.key());
        } else {
            answer.items.vectors.insert(it.key(), *it);
            room -= int(it->size());
        }
    }
    return answer;
}

} // namespace

PublishedObject::PublishedObject(const QString &serviceName, std::shared_ptr<ServiceFeed> feed)
    : m_serviceName(serviceName)
    , m_busName(graph::busName(serviceName))
    , m_path(graph::busPath(m_busName).toLatin1())
    , m_feed(std::move(feed))
{
}

void PublishedObject::handleOpened()
{
    graph::Message message(
        dbus_message_new_method_call(DBUS_SERVICE_DBUS, DBUS_PATH_DBUS, DBUS_INTERFACE_DBUS, "RequestName"));
    const QByteArray name = m_busName.toLatin1();
    const char *text = name.constData();
    // One that has been on the bus waits there until it can be again.
    const dbus_uint32_t flags = m_wasPublished ? 0 : DBUS_NAME_FLAG_DO_NOT_QUEUE;
    dbus_message_append_args(message.get(), DBUS_TYPE_STRING, &text, DBUS_TYPE_UINT32, &flags,
                             DBUS_TYPE_INVALID);
    link()->call(std::move(message), this, [this](DBusMessage *answer) { takeName(answer); });
}

void PublishedObject::handleUnreachable(const QString &why)
{
    if (!m_wasPublished)
        m_feed->setStatus(ServiceFeed::NoBus, why);
}

void PublishedObject::handleLost()
{
    m_isPublished = false;
    m_waiting.clear();
}

void PublishedObject::handleRemoved()
{
    if (!m_isPublished)
        return;
    broadcast(m_feed->items().takeChanges());
    graph::Message message(
        dbus_message_new_method_call(DBUS_SERVICE_DBUS, DBUS_PATH_DBUS, DBUS_INTERFACE_DBUS, "ReleaseName"));
    const QByteArray name = m_busName.toLatin1();
    const char *text = name.constData();
    dbus_message_append_args(message.get(), DBUS_TYPE_STRING, &text, DBUS_TYPE_INVALID);
    dbus_message_set_no_reply(message.get(), true);
    link()->send(std::move(message));
}

bool PublishedObject::handleMessage(DBusMessage *message)
{
    if (dbus_message_get_type(message) != DBUS_MESSAGE_TYPE_METHOD_CALL ||
        !dbus_message_has_path(message, m_path.constData()))
        return false;
    if (dbus_message_is_method_call(message, DBUS_INTERFACE_INTROSPECTABLE, "Introspect")) {
        introduce(message);
        return true;
    }
    if (!graph::isItemsRequest(message))
        return false;
    if (mayWrite() && m_waiting.empty())
        answer(message);
    else if (m_waiting.size() < size_t(graph::maxWaitingCalls))
        m_waiting.emplace_back(dbus_message_ref(message));
    else
        link()->send(graph::Message(
            dbus_message_new_error(message, DBUS_ERROR_LIMITS_EXCEEDED, "too many requests wait")));
    return true;
}

PublishedObject::TimePoint PublishedObject::handleTime(TimePoint now)
{
    if (m_isPublished && mayWrite()) {
        answerWaiting();
        if (m_feed->items().hasChanges())
            broadcast(m_feed->items().takeChanges());
    }
    // Else it is looked at again when the bus has taken something, which is a turn of its own.
    return m_waiting.empty() ? TimePoint::max() : now + std::chrono::milliseconds(100);
}

bool PublishedObject::mayWrite() const
{
    return link()->waitingBytes() < graph::maxWaitingBytes;
}

void PublishedObject::takeName(DBusMessage *answer)
{
    dbus_uint32_t result = 0;
    dbus_message_get_args(answer, nullptr, DBUS_TYPE_UINT32, &result, DBUS_TYPE_INVALID);
    m_isPublished = result == DBUS_REQUEST_NAME_REPLY_PRIMARY_OWNER ||
                    result == DBUS_REQUEST_NAME_REPLY_ALREADY_OWNER || m_wasPublished;
    if (m_wasPublished) {
        if (result == DBUS_REQUEST_NAME_REPLY_IN_QUEUE)
            link()->tell(QStringLiteral("the name %1 is taken; it waits to be free").arg(m_busName));
        return;
    }
    m_wasPublished = m_isPublished;
    m_feed->setStatus(m_isPublished ? ServiceFeed::Answered : ServiceFeed::Failed);
}

void PublishedObject::answer(DBusMessage *request)
{
    BusItems items;
    // Told first: the answer's serial is that of the last change that it holds.
    broadcast(m_feed->items().takeChanges(&items));
    QStringList laterValues;
    const graph::ItemsAnswer answer = fittingAnswer(m_serial, items, &laterValues);
    link()->send(graph::itemsReply(request, answer));
    const graph::Sender sender{m_busName, dbus_message_get_sender(request)};
    for (const QString &itemName : answer.later)
        sendVector(sender.receiver, itemName, items.vectors.value(itemName));
    for (const QString &itemName : qAsConst(laterValues))
        link()->send(graph::valueSignal(sender, m_serial, itemName, items.values.value(itemName)));
}

void PublishedObject::answerWaiting()
{
    while (!m_waiting.empty() && mayWrite()) {
        const graph::Message request = std::move(m_waiting.front());
        m_waiting.pop_front();
        answer(request.get());
    }
}

void PublishedObject::broadcast(const ItemStore::Changes &changes)
{
    for (const ItemStore::Change &change : changes) {
        if (!change.item.isVector) {
            link()->send(graph::valueSignal({m_busName, {}}, ++m_serial, change.itemName, change.item.value));
        } else if (change.appended >= 0 && change.appended <= change.item.vector.size()) {
            sendAppended(change);
        } else {
            ++m_serial;
            sendVector({}, change.itemName, change.item.vector);
        }
    }
}

void PublishedObject::sendVector(const QByteArray &receiver, const QString &itemName,
                                 const QVector<double> &vector)
{
    int offset = 0;
    do {
        link()->send(graph::arrayPartSignal({m_busName, receiver}, m_serial, itemName, vector, offset));
        offset += graph::maxPartElements;
    } while (offset < vector.size());
}

void PublishedObject::sendAppended(const ItemStore::Change &change)
{
    const QVector<double> &vector = change.item.vector;
    int offset = int(vector.size()) - int(change.appended);
    quint64 dropped = quint64(change.dropped);
    do {
        link()->send(graph::arrayAppendedSignal({m_busName, {}}, ++m_serial, change.itemName, dropped, vector,
                                                offset));
        dropped = 0;
        offset += graph::maxPartElements;
    } while (offset < vector.size());
}

void PublishedObject::introduce(DBusMessage *request)
{
    graph::Message message(dbus_message_new_method_return(request));
    const char *text = introspection;
    dbus_message_append_args(message.get(), DBUS_TYPE_STRING, &text, DBUS_TYPE_INVALID);
    link()->send(std::move(message));
}
