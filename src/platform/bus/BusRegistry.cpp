#include "platform/bus/BusRegistry.h"

#include "platform/bus/BusClient.h"
#include "platform/bus/BusLink.h"
#include "platform/bus/BusLog.h"
#include "platform/bus/BusName.h"

#include <QCoreApplication>

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
    // The clients go with the application object: the bus connection needs its event loop.
    if (m_clients.isEmpty())
        qAddPostRoutine(&BusRegistry::clearAtExit);
    auto *added = new BusClient(serviceName);
    m_clients.insert(serviceName, added);
    return added;
}

BusLink &BusRegistry::link()
{
    if (!m_link)
        m_link = std::make_unique<BusLink>();
    return *m_link;
}

bool BusRegistry::addPublisher(const QString &serviceName, BusPublisher *publisher)
{
    if (!isValid(serviceName))
        return false;
    if (m_publishers.contains(serviceName)) {
        qCWarning(busLog) << "a publisher of" << serviceName
                          << "exists in this process; the second one publishes nothing";
        return false;
    }
    m_publishers.insert(serviceName, publisher);
    return true;
}

void BusRegistry::removePublisher(const QString &serviceName)
{
    m_publishers.remove(serviceName);
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

void BusRegistry::clear()
{
    // Taken out first: what listens to a client's end may ask for another one.
    const QHash<QString, BusClient *> clients = std::exchange(m_clients, {});
    qDeleteAll(clients);
    m_link.reset();
}
