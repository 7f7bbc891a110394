#pragma once

#include "platform/bus/BusLink.h"
#include "platform/bus/BusSources.h"

#include <QHash>
#include <QSet>
#include <QString>

#include <memory>

class BusClient;

// The clients and publishers of this process by service name. This is how they meet without a bus daemon.
// Used from the thread of the application only, like everything of the bus.
class BusRegistry : public BusSources
{
public:
    static BusRegistry &instance();

    // Null when the name was not asked for yet.
    BusClient *client(const QString &serviceName) const { return m_clients.value(serviceName); }
    // The client for the name, made when first asked for; null for a name that no service can have.
    BusClient *sharedClient(const QString &serviceName);

    // Goes with the clients.
    BusCourier &courier() override;
    bool hasCourier() const { return m_courier != nullptr; }
    // For the next courier.
    void setPatience(const BusPatience &patience) { m_patience = patience; }

    const BusItems *itemsInProcess(const QString &serviceName) const override
    {
        return m_published.value(serviceName);
    }
    // The items of a publisher. False, with one log line, when the name is invalid or taken.
    bool addPublisher(const QString &serviceName, const BusItems *items);
    void removePublisher(const QString &serviceName);

private:
    BusRegistry();
    ~BusRegistry() override;
    Q_DISABLE_COPY(BusRegistry)

    static void clearAtExit();
    void endWithApplication();
    bool isValid(const QString &serviceName);
    void clear();

    QHash<QString, BusClient *> m_clients;
    QHash<QString, const BusItems *> m_published;
    QSet<QString> m_refusedNames;
    BusPatience m_patience;
    std::unique_ptr<BusCourier> m_courier;
};
