#include "platform/bus/BusRegistry.h"

#include "platform/bus/BusClient.h"
#include "platform/bus/BusCourier.h"
#include "platform/bus/BusLog.h"
#include "platform/bus/BusName.h"

#include <QCoreApplication>

#include <utility>

BusRegistry &BusRegistry::instance()
{
    static BusRegistry registry;
    return registry;
}

BusRegistry::BusRegistry() = default;

BusRegistry::~BusRegistry()
{
    clear();
}

BusClient *BusRegistry::sharedClient(const QString &serviceName)
{
    if (BusClient *known = client(serviceName))
        return known;
    if (!isValid(serviceName))
        return nullptr;
    endWithApplication();
    auto *added = new BusClient(serviceName, *this);
    m_clients.insert(serviceName, added);
    return added;
}

BusCourier &BusRegistry::courier()
{
    if (!m_courier) {
        endWithApplication();
        m_courier = std::make_unique<BusCourier>(m_patience);
    }
    return *m_courier;
}

bool BusRegistry::addPublisher(const QString &serviceName, const BusItems *items)
{
    if (!isValid(serviceName))
        return false;
    if (m_published.contains(serviceName)) {
        qCWarning(busLog) << "a publisher of" << serviceName
                          << "exists in this process; the second one publishes nothing";
        return false;
    }
    m_published.insert(serviceName, items);
    return true;
}

void BusRegistry::removePublisher(const QString &serviceName)
{
    m_published.remove(serviceName);
}

void BusRegistry::clearAtExit()
{
    instance().clear();
}

bool BusRegistry::isValid(const QString &serviceName)
{
    if (!graph::busName(serviceName).isEmpty())
        return true;
    if (!m_refusedNames.contains(serviceName)) {
        m_refusedNames.insert(serviceName);
        qCWarning(busLog) << serviceName << "is no name for a service on the bus";
    }
    return false;
}

// The clients go with the application object, whose event loop feeds them.
void BusRegistry::endWithApplication()
{
    if (m_clients.isEmpty() && !m_courier)
        qAddPostRoutine(&BusRegistry::clearAtExit);
}

void BusRegistry::clear()
{
    // Taken out first: what listens to a client's end may ask for another one.
    const QHash<QString, BusClient *> clients = std::exchange(m_clients, {});
    qDeleteAll(clients);
    m_courier.reset();
}
