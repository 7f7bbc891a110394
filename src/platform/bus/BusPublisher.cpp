#include "platform/bus/BusPublisher.h"

#include "platform/bus/BusClient.h"
#include "platform/bus/BusLog.h"
#include "platform/bus/BusRegistry.h"
#include "platform/bus/ItemValue.h"

BusPublisher::BusPublisher(const QString &serviceName, QObject *parent)
    : QObject(parent)
    , m_serviceName(serviceName)
    , m_isActive(BusRegistry::instance().addPublisher(serviceName, this))
{
    BusClient *client = BusRegistry::instance().client(serviceName);
    if (m_isActive && client)
        client->leaveBus();
}

BusPublisher::~BusPublisher()
{
    if (m_isActive)
        BusRegistry::instance().removePublisher(m_serviceName);
}

bool BusPublisher::publish()
{
    return false;
}

void BusPublisher::setValue(const QString &itemName, const QVariant &value)
{
    const QVariant accepted = graph::itemValue(value);
    if (!accepted.isValid() || m_items.vectors.contains(itemName)) {
        qCWarning(busLog) << m_serviceName << "cannot publish" << value << "as" << itemName;
        return;
    }
    const auto known = m_items.values.constFind(itemName);
    if (!m_isActive || (known != m_items.values.constEnd() && graph::sameValue(*known, accepted)))
        return;
    m_items.values.insert(itemName, accepted);
    // Last: whoever is told may destroy the publisher.
    if (BusClient *client = BusRegistry::instance().client(m_serviceName))
        client->setValue(itemName, accepted);
}

void BusPublisher::setVector(const QString &itemName, const QVector<double> &vector)
{
    if (m_items.values.contains(itemName)) {
        qCWarning(busLog) << m_serviceName << "cannot publish an array as" << itemName << "which is a value";
        return;
    }
    const auto known = m_items.vectors.constFind(itemName);
    if (!m_isActive || (known != m_items.vectors.constEnd() && graph::sameContents(*known, vector)))
        return;
    m_items.vectors.insert(itemName, vector);
    if (BusClient *client = BusRegistry::instance().client(m_serviceName))
        client->setVector(itemName, vector);
}
