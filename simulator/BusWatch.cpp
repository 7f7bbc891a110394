#include "BusWatch.h"

#include <QDBusConnection>
#include <QDBusError>

BusWatch::BusWatch(QObject *parent)
    : QObject(parent)
{
    QDBusConnection::sessionBus().connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"),
                                          QStringLiteral("org.freedesktop.DBus.Local"),
                                          QStringLiteral("Disconnected"), this, SIGNAL(lost()));
}

QString BusWatch::problem() const
{
    const QDBusConnection bus = QDBusConnection::sessionBus();
    return bus.isConnected() ? QString() : bus.lastError().message();
}
