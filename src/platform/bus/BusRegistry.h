#pragma once

#include <QHash>
#include <QSet>
#include <QString>

class BusClient;
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

    BusPublisher *publisher(const QString &serviceName) const { return m_publishers.value(serviceName); }
    // False, with one log line, when the name is invalid or taken.
    bool addPublisher(const QString &serviceName, BusPublisher *publisher);
    void removePublisher(const QString &serviceName);

private:
    BusRegistry() = default;
    ~BusRegistry();
    Q_DISABLE_COPY(BusRegistry)

    static void clearAtExit();
    bool isValid(const QString &serviceName);
    void clear();

    QHash<QString, BusClient *> m_clients;
    QHash<QString, BusPublisher *> m_publishers;
    QSet<QString> m_refusedNames;
};
