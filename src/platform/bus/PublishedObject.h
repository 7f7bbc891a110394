#pragma once

#include "platform/bus/BusItems.h"

#include <QDBusConnection>
#include <QDBusVirtualObject>

class BusPublisher;

// A publisher's object on the session bus, with a connection of its own.
class PublishedObject : public QDBusVirtualObject
{
    Q_OBJECT

public:
    PublishedObject(const QString &serviceName, BusPublisher *publisher);
    ~PublishedObject() override;

    // Connects, registers the object, then its name: a service started on demand is called the moment it has
    // the name. False with one log line when that fails.
    bool open();

    void sendValue(const QString &itemName, const QVariant &value);
    void sendVector(const QString &itemName, const QVector<double> &vector);

    QString introspect(const QString &path) const override;
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override;

private:
    QDBusMessage signal(const char *name, const QString &receiver) const;
    void sendParts(const QString &itemName, const QVector<double> &vector, const QString &receiver);
    void send(const QDBusMessage &message);

    QString m_serviceName;
    QString m_busName;
    QDBusConnection m_connection;
    BusPublisher *m_publisher; // the parent
    quint64 m_serial = 0;
    bool m_failureReported = false;
};
