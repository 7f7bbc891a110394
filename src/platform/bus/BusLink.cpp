#include "platform/bus/BusLink.h"

#include "platform/bus/BusLog.h"

#include <QDBusError>
#include <QRegularExpression>

#include <algorithm>

namespace {

const char connectionName[] = "toskorn";
constexpr int shortestWait = 100; // ms
constexpr int longestWait = 5000;

// A bus that was started again at its old place has a new identity, which an address may demand.
QString placeOfBus()
{
    return qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS")
        .remove(QRegularExpression(QStringLiteral(",guid=[^,;]*")));
}

} // namespace

BusLink::BusLink()
    : m_address(placeOfBus())
    , m_bus(QString())
{
    m_timer.setSingleShot(true);
    m_timer.setInterval(shortestWait);
    connect(&m_timer, SIGNAL(timeout()), this, SLOT(lookAgain()));
}

BusLink::~BusLink()
{
    // A process that never reached the bus need not start QtDBus to leave it.
    if (!m_bus.name().isEmpty())
        QDBusConnection::disconnectFromBus(QLatin1String(connectionName));
}

bool BusLink::open()
{
    // Calls may find out before the news of it arrives.
    if (!m_bus.name().isEmpty() && !m_bus.isConnected())
        handleDisconnected();
    if (m_bus.isConnected() || connectToBus())
        return true;
    waitForBus();
    return false;
}

void BusLink::handleDisconnected()
{
    // News of the connection before this one.
    if (m_bus.name().isEmpty() || m_bus.isConnected())
        return;
    qCWarning(busLog) << "the session bus has gone; values stay as they are until it is back";
    m_bus = QDBusConnection(QString());
    emit lost();
    QDBusConnection::disconnectFromBus(QLatin1String(connectionName));
    waitForBus();
}

void BusLink::lookAgain()
{
    m_timer.setInterval(std::min(2 * m_timer.interval(), longestWait));
    if (!connectToBus())
        waitForBus();
}

bool BusLink::connectToBus()
{
    const auto name = QLatin1String(connectionName);
    QDBusConnection bus = m_address.isEmpty()
                              ? QDBusConnection::connectToBus(QDBusConnection::SessionBus, name)
                              : QDBusConnection::connectToBus(m_address, name);
    bus.connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"),
                QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"), this,
                SLOT(handleDisconnected()));
    // Asked last: whatever goes wrong from here on is told.
    if (!bus.isConnected()) {
        m_errorText = bus.lastError().message();
        // Else the next attempt would be given the failed connection again.
        QDBusConnection::disconnectFromBus(name);
        return false;
    }
    m_bus = bus;
    m_timer.stop();
    m_timer.setInterval(shortestWait);
    emit opened();
    return true;
}

void BusLink::waitForBus()
{
    if (!m_timer.isActive())
        m_timer.start();
}
