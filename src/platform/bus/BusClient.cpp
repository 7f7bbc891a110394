#include "platform/bus/BusClient.h"

#include "platform/bus/BusLog.h"
#include "platform/bus/BusPublisher.h"
#include "platform/bus/BusRegistry.h"
#include "platform/bus/ORNClientItem.h"
#include "platform/bus/RemoteService.h"

BusClient::BusClient(const QString &serviceName, QObject *parent)
    : ORNClientInterface(parent)
    , m_serviceName(serviceName)
{
}

BusClient::~BusClient() = default;

void BusClient::connectToService()
{
    if (std::exchange(m_isConnected, true)) {
        if (m_remote)
            m_remote->refresh();
        return;
    }
    if (const BusPublisher *publisher = BusRegistry::instance().publisher(m_serviceName)) {
        setItems(publisher->items());
        return;
    }
    m_remote = new RemoteService(m_serviceName, &BusRegistry::instance().link(), this);
    m_remote->start();
}

void BusClient::enterProcess()
{
    m_isConnected = true;
    if (m_remote)
        m_remote->stop();
}

void BusClient::leaveProcess()
{
    m_isConnected = false;
}

void BusClient::setValue(const QString &itemName, const QVariant &value)
{
    ORNClientItem *&item = m_items[itemName];
    if (!item)
        item = new ORNClientItem(itemName, this);
    if (qobject_cast<ORNVecClientItem *>(item))
        reportKind(itemName);
    else
        item->setValue(value);
}

void BusClient::setVector(const QString &itemName, const QVector<double> &vector)
{
    ORNClientItem *&item = m_items[itemName];
    if (!item)
        item = new ORNVecDoubleClientItem(itemName, this);
    if (auto *vectorItem = qobject_cast<ORNVecDoubleClientItem *>(item))
        vectorItem->setVector(vector);
    else
        reportKind(itemName);
}

void BusClient::setItems(const BusItems &items)
{
    // A copy: whoever is told of a change may publish another one.
    const BusItems all = items;
    for (auto it = all.values.cbegin(); it != all.values.cend(); ++it)
        setValue(it.key(), it.value());
    for (auto it = all.vectors.cbegin(); it != all.vectors.cend(); ++it)
        setVector(it.key(), it.value());
}

void BusClient::reportKind(const QString &itemName)
{
    if (std::exchange(m_kindReported, true))
        return;
    qCWarning(busLog) << m_serviceName << "published both a value and an array as" << itemName;
}
