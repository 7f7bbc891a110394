#include "platform/bus/RemoteService.h"

#include "platform/bus/BusClient.h"
#include "platform/bus/BusLink.h"
#include "platform/bus/BusLog.h"
#include "platform/bus/BusMessage.h"
#include "platform/bus/BusName.h"
#include "platform/bus/ItemValue.h"

#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>
#include <QDBusVariant>

#include <limits>

namespace {

constexpr int longestWait = 2000; // ms
// The call ends when the service answers or leaves the bus.
constexpr int noLimit = std::numeric_limits<int>::max();

} // namespace

RemoteService::RemoteService(const QString &serviceName, BusLink *link, BusClient *client)
    : QObject(client)
    , m_serviceName(serviceName)
    , m_busName(graph::busName(serviceName))
    , m_client(client)
    , m_link(link)
{
}

void RemoteService::start()
{
    const bool isBusThere = m_link->open();
    connect(m_link, SIGNAL(opened()), this, SLOT(handleBusOpened()));
    connect(m_link, SIGNAL(lost()), this, SLOT(handleBusLost()));
    if (!isBusThere) {
        qCWarning(busLog) << m_serviceName
                          << "cannot be reached, there is no session bus:" << m_link->errorText();
        return;
    }
    follow();
    if (fetchNow() == QDBusError::ServiceUnknown)
        qCWarning(busLog) << m_serviceName << "is not on the session bus";
}

void RemoteService::refresh()
{
    if (m_client && m_owner.isEmpty() && m_mayWait && m_link->bus().isConnected())
        fetchNow();
}

void RemoteService::stop()
{
    m_client = nullptr;
    deleteLater();
}

void RemoteService::handleBusOpened()
{
    if (!m_client)
        return;
    follow();
    fetchLater();
}

void RemoteService::handleBusLost()
{
    // On another bus the same name may belong to someone else.
    m_owner.clear();
    m_assemblies.clear();
    delete m_call;
    delete m_watcher;
}

void RemoteService::handleOwnerChanged(const QString &, const QString &oldOwner, const QString &newOwner)
{
    if (m_owner == oldOwner)
        m_owner.clear();
    // A wait may have ended with the new owner's answer, before this news of it.
    if (m_client && !newOwner.isEmpty() && newOwner != m_owner)
        fetchLater();
}

void RemoteService::handleFetched(QDBusPendingCallWatcher *call)
{
    call->deleteLater();
    if (call != m_call)
        return;
    m_call.clear();
    const QDBusMessage answer = call->reply();
    const QDBusError error(answer);
    if (answer.type() == QDBusMessage::ReplyMessage)
        takeAnswer(answer);
    else if (error.type() != QDBusError::NoReply && error.type() != QDBusError::ServiceUnknown &&
             error.type() != QDBusError::Disconnected)
        qCWarning(busLog) << m_serviceName << "has no items:" << answer.errorMessage();
}

void RemoteService::handleValueChanged(const QDBusMessage &message)
{
    if (!isNews(message))
        return;
    const QVariant value = graph::itemValue(message.arguments().at(2).value<QDBusVariant>().variant());
    if (value.isValid())
        m_client->setValue(message.arguments().at(1).toString(), value);
}

void RemoteService::handleArrayChanged(const QDBusMessage &message)
{
    if (!isNews(message))
        return;
    const auto part = graph::vectorOfBlock(message.arguments().at(4).toByteArray());
    if (part)
        takePart(message, *part);
    else
        reportMalformed();
}

void RemoteService::follow()
{
    // Matched by path: to match by the service's name, QtDBus would first wait for the bus to tell its owner.
    const QString path = graph::busPath(m_busName);
    const auto interface = QLatin1String(graph::itemsInterface);
    QDBusConnection bus = m_link->bus();
    bus.connect(QString(), path, interface, QLatin1String(graph::valueChangedSignal),
                QLatin1String(graph::valueChangedSignature), this, SLOT(handleValueChanged(QDBusMessage)));
    bus.connect(QString(), path, interface, QLatin1String(graph::arrayChangedSignal),
                QLatin1String(graph::arrayChangedSignature), this, SLOT(handleArrayChanged(QDBusMessage)));
    m_watcher = new QDBusServiceWatcher(m_busName, bus, QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(m_watcher, SIGNAL(serviceOwnerChanged(QString, QString, QString)), this,
            SLOT(handleOwnerChanged(QString, QString, QString)));
}

QDBusMessage RemoteService::request() const
{
    return QDBusMessage::createMethodCall(m_busName, graph::busPath(m_busName),
                                          QLatin1String(graph::itemsInterface),
                                          QLatin1String(graph::getItemsMethod));
}

QDBusError::ErrorType RemoteService::fetchNow()
{
    const QDBusMessage answer = m_link->bus().call(request(), QDBus::Block, longestWait);
    if (answer.type() == QDBusMessage::ReplyMessage) {
        delete m_call;
        takeAnswer(answer);
        return QDBusError::NoError;
    }
    const QDBusError::ErrorType error = QDBusError(answer).type();
    m_mayWait = error == QDBusError::ServiceUnknown;
    switch (error) {
    case QDBusError::ServiceUnknown:
        break;
    case QDBusError::NoReply:
    case QDBusError::Timeout:
    case QDBusError::TimedOut:
        qCWarning(busLog) << m_serviceName << "does not answer";
        fetchLater();
        break;
    default:
        qCWarning(busLog) << m_serviceName << "has no items:" << answer.errorMessage();
    }
    return error;
}

void RemoteService::fetchLater()
{
    delete m_call;
    m_call = new QDBusPendingCallWatcher(m_link->bus().asyncCall(request(), noLimit), this);
    connect(m_call, SIGNAL(finished(QDBusPendingCallWatcher *)), this,
            SLOT(handleFetched(QDBusPendingCallWatcher *)));
}

void RemoteService::takeAnswer(const QDBusMessage &message)
{
    int malformed = 0;
    const auto answer = graph::itemsAnswer(message, &malformed);
    if (!answer) {
        qCWarning(busLog) << m_serviceName << "answers with" << message.signature() << "which are no items";
        return;
    }
    m_owner = message.service();
    m_mayWait = true;
    m_serial = answer->serial;
    m_assemblies.clear();
    m_malformedReported = false;
    if (malformed > 0)
        reportMalformed();
    if (!m_client)
        return;
    for (const QString &itemName : answer->later) {
        if (!m_client->item(itemName))
            m_client->setVector(itemName, {});
    }
    m_client->setItems(answer->items);
}

void RemoteService::takePart(const QDBusMessage &message, const QVector<double> &part)
{
    const QVariantList arguments = message.arguments();
    const quint64 serial = arguments.at(0).toULongLong();
    const QString itemName = arguments.at(1).toString();
    const quint64 size = arguments.at(2).toULongLong();
    const quint64 offset = arguments.at(3).toULongLong();
    if (offset == 0 && quint64(part.size()) == size) {
        m_client->setVector(itemName, part);
        return;
    }
    // Grown by what arrives, never by what a message announces: that number may be any.
    Assembly &assembly = m_assemblies[itemName];
    if (offset == 0)
        assembly = {serial, {}};
    constexpr quint64 maxSize = quint64(std::numeric_limits<int>::max()) / sizeof(double);
    if (assembly.serial != serial || quint64(assembly.vector.size()) != offset || part.isEmpty() ||
        size > maxSize || offset + quint64(part.size()) > size) {
        m_assemblies.remove(itemName);
        reportMalformed();
        return;
    }
    assembly.vector += part;
    if (quint64(assembly.vector.size()) == size)
        m_client->setVector(itemName, m_assemblies.take(itemName).vector);
}

bool RemoteService::isNews(const QDBusMessage &message) const
{
    // Arrays that follow an answer carry the answer's own serial.
    return m_client && !m_owner.isEmpty() && message.service() == m_owner &&
           message.arguments().at(0).toULongLong() >= m_serial;
}

void RemoteService::reportMalformed()
{
    if (!std::exchange(m_malformedReported, true))
        qCWarning(busLog) << m_serviceName
                          << "sends arrays that are no whole number of doubles or lack a part";
}
