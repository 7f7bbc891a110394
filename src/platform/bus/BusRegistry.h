#pragma once

#include "platform/bus/BusLink.h"

#include <QHash>
#include <QSet>
#include <QString>

#include <memory>

class BusClient;
class BusCourier;
class BusPublisher;

// The clients and publishers of this process by service name. This is how they meet without a bus daemon.
// Used from the thread of the application only, like everything of the bus.
class BusRegistry
{
public:
    static BusRegistry &instance();

    // Null when the name was not asked for yet.
    BusClient *client(const QString &serviceName) const { return m_clients.value(serviceName); }
    // The client for the name, made when first asked for; null for a name that no service can have.
    BusClient *sharedClient(const QString &serviceName);

    // The way to the bus, made when first asked for. Goes with the clients.
    BusCourier &courier();
    bool hasCourier() const { return m_courier != nullptr; }
    // For the next courier.
    void setPatience(const BusPatience &patience) { m_patience = patience; }

    BusPublisher *publisher(const QString &serviceName) const { return m_publishers.value(serviceName); }
    // False, with one log line, when the name is invalid or taken.
    bool addPublisher(const QString &serviceName, BusPublisher *publisher);
    void removePublisher(const QString &serviceName);

private:
    BusRegistry();
    ~BusRegistry();
    Q_DISABLE_COPY(BusRegistry)

    static void clearAtExit();
    void endWithApplication();
    bool isValid(const QString &serviceName);
    void clear();

    QHash<QString, BusClient *> m_clients;
    QHash<QString, BusPublisher *> m_publishers;
    QSet<QString> m_refusedNames;
    BusPatience m_patience;
    std::unique_ptr<BusCourier> m_courier;
};
