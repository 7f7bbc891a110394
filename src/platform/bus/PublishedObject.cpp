#include "platform/bus/PublishedObject.h"

#include "platform/bus/BusLog.h"
#include "platform/bus/BusMessage.h"
#include "platform/bus/BusName.h"
#include "platform/bus/BusPublisher.h"

#include <QDBusError>
#include <QDBusVariant>

PublishedObject::PublishedObject(const QString &serviceName, BusPublisher *publisher)
    : QDBusVirtualObject(publisher)
    , m_serviceName(serviceName)
    , m_busName(graph::busName(serviceName))
    , m_connection(QDBusConnection::connectToBus(QDBusConnection::SessionBus, m_busName))
    , m_publisher(publisher)
{
}

PublishedObject::~PublishedObject()
{
    QDBusConnection::disconnectFromBus(m_busName);
}

bool PublishedObject::open()
{
    if (!m_connection.isConnected()) {
        qCWarning(busLog) << m_serviceName << "cannot be published, there is no session bus:"
                          << m_connection.lastError().message();
        return false;
    }
    if (!m_connection.registerVirtualObject(graph::busPath(m_busName), this) ||
        !m_connection.registerService(m_busName)) {
        qCWarning(busLog) << m_serviceName << "cannot be published, the name" << m_busName << "is taken";
        return false;
    }
    return true;
}

void PublishedObject::sendValue(const QString &itemName, const QVariant &value)
{
    QDBusMessage message = signal(graph::valueChangedSignal, QString());
    message << ++m_serial << itemName << QVariant::fromValue(QDBusVariant(value));
    send(message);
}

void PublishedObject::sendVector(const QString &itemName, const QVector<double> &vector)
{
    ++m_serial;
    sendParts(itemName, vector, QString());
}

QString PublishedObject::introspect(const QString &) const
{
    return QStringLiteral("<interface name=\"org.toskorn.Items\">"
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
                          "</interface>");
}

bool PublishedObject::handleMessage(const QDBusMessage &message, const QDBusConnection &)
{
    const bool isOurs =
        message.interface().isEmpty() || message.interface() == QLatin1String(graph::itemsInterface);
    if (!isOurs || message.type() != QDBusMessage::MethodCallMessage ||
        message.member() != QLatin1String(graph::getItemsMethod))
        return false;
    const BusItems &items = m_publisher->items();
    const graph::ItemsAnswer answer = graph::itemsAnswer(m_serial, items);
    send(message.createReply(graph::messageArguments(answer)));
    for (const QString &itemName : answer.later)
        sendParts(itemName, items.vectors.value(itemName), message.service());
    return true;
}

QDBusMessage PublishedObject::signal(const char *name, const QString &receiver) const
{
    const QString path = graph::busPath(m_busName);
    const auto interface = QLatin1String(graph::itemsInterface);
    return receiver.isEmpty()
               ? QDBusMessage::createSignal(path, interface, QLatin1String(name))
               : QDBusMessage::createTargetedSignal(receiver, path, interface, QLatin1String(name));
}

void PublishedObject::sendParts(const QString &itemName, const QVector<double> &vector,
                                const QString &receiver)
{
    int offset = 0;
    do {
        QDBusMessage message = signal(graph::arrayChangedSignal, receiver);
        message.setArguments(graph::arrayPartArguments(m_serial, itemName, vector, offset));
        send(message);
        offset += graph::maxPartElements;
    } while (offset < vector.size());
}

void PublishedObject::send(const QDBusMessage &message)
{
    if (m_connection.send(message) || std::exchange(m_failureReported, true))
        return;
    qCWarning(busLog) << m_serviceName << "cannot send to its clients:" << m_connection.lastError().message();
}
