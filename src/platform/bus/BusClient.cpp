#include "platform/bus/BusClient.h"

#include "platform/bus/BusLog.h"
#include "platform/bus/BusPublisher.h"
#include "platform/bus/BusRegistry.h"
#include "platform/bus/ORNClientItem.h"

Q_LOGGING_CATEGORY(busLog, "toskorn.bus")

BusClient::BusClient(const QString &serviceName, QObject *parent)
    : ORNClientInterface(parent)
    , m_serviceName(serviceName)
{
}

BusClient::~BusClient() = default;

void BusClient::connectToService()
{
    if (const BusPublisher *publisher = BusRegistry::instance().publisher(m_serviceName))
        setItems(publisher->items());
}

void BusClient::leaveBus() {}

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
