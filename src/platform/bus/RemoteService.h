#pragma once

#include <QDBusError>
#include <QHash>
#include <QObject>
#include <QPointer>
#include <QVector>

class BusClient;
class BusLink;
class QDBusMessage;
class QDBusPendingCallWatcher;
class QDBusServiceWatcher;

namespace graph {
struct ItemsAnswer;
}

// The service on the session bus that feeds a client: fetches all items at the start and whenever the service
// or the bus comes back, and hands on the changes in between.
class RemoteService : public QObject
{
    Q_OBJECT

public:
    RemoteService(const QString &serviceName, BusLink *link, BusClient *client);

    // Follows the service and fetches its items, waiting for them for 2 s at most. A service that is not
    // there, or answers later, is one log line; its items come by themselves.
    void start();
    // Waits in the same way for the items of a service that went and may be back: who asks for them now is not to
    // be given those of its predecessor. Not a second time for one that did not answer in time.
    void refresh();
    // Nothing reaches the client any more; the object goes with the next turn of the event loop.
    void stop();

private slots:
    void handleBusOpened();
    void handleBusLost();
    void handleOwnerChanged(const QString &busName, const QString &oldOwner, const QString &newOwner);
    void handleFetched(QDBusPendingCallWatcher *call);
    void handleValueChanged(const QDBusMessage &message);
    void handleArrayChanged(const QDBusMessage &message);

private:
    // A long array of which some parts have arrived.
    struct Assembly
    {
        quint64 serial = 0;
        QVector<double> vector;
    };

    void follow();
    QDBusMessage request() const;
    QDBusError::ErrorType fetchNow();
    void fetchLater();
    void takeAnswer(const QDBusMessage &message);
    void takePart(const QDBusMessage &message, const QVector<double> &part);
    bool isNews(const QDBusMessage &message) const;
    void reportMalformed();

    QString m_serviceName;
    QString m_busName;
    BusClient *m_client; // the parent; null once stopped
    BusLink *m_link;     // outlives the clients
    QPointer<QDBusServiceWatcher> m_watcher;
    QPointer<QDBusPendingCallWatcher> m_call;
    // The process whose items the client has. Names on the bus pass from one to another, and anyone may send
    // signals.
    QString m_owner;
    quint64 m_serial = 0;
    QHash<QString, Assembly> m_assemblies;
    bool m_mayWait = true;
    bool m_malformedReported = false;
};
