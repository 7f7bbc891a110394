#include "PrivateBus.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace gallery {

namespace {

const int startTimeout = 5000;

bool acceptsConnection(const QByteArray &path, bool isAbstract)
{
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    const std::size_t offset = isAbstract ? 1 : 0;
    if (path.isEmpty() || std::size_t(path.size()) + offset >= sizeof address.sun_path)
        return false;
    std::memcpy(address.sun_path + offset, path.constData(), std::size_t(path.size()));
    const int descriptor = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (descriptor < 0)
        return false;
    const auto length = socklen_t(offsetof(sockaddr_un, sun_path) + offset + std::size_t(path.size()));
    const bool accepted = ::connect(descriptor, reinterpret_cast<sockaddr *>(&address), length) == 0;
    ::close(descriptor);
    return accepted;
}

QByteArray addressValue(const QByteArray &address, const QByteArray &key)
{
    for (const QByteArray &field : address.mid(address.indexOf(':') + 1).split(',')) {
        if (field.startsWith(key + '='))
            return QByteArray::fromPercentEncoding(field.mid(key.size() + 1));
    }
    return QByteArray();
}

// A plain connection attempt: the bus library would remember an address that did not work for good.
bool isReachable(const QByteArray &address)
{
    if (!address.startsWith("unix:"))
        return !address.isEmpty();
    return acceptsConnection(addressValue(address, "path"), false) ||
           acceptsConnection(addressValue(address, "abstract"), true);
}

bool hasSessionBus()
{
    const QList<QByteArray> addresses = qgetenv("DBUS_SESSION_BUS_ADDRESS").split(';');
    if (std::any_of(addresses.begin(), addresses.end(), isReachable))
        return true;
    const QByteArray runtimeFolder = qgetenv("XDG_RUNTIME_DIR");
    const QByteArray userBus = runtimeFolder + "/bus";
    if (runtimeFolder.isEmpty() || !acceptsConnection(userBus, false))
        return false;
    return qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=" + userBus);
}

} // namespace

PrivateBus::PrivateBus()
{
    if (hasSessionBus())
        return;
    const QString address = startedBusAddress();
    if (!address.isEmpty())
        qputenv("DBUS_SESSION_BUS_ADDRESS", address.toLocal8Bit());
}

QString PrivateBus::startedBusAddress()
{
    m_daemon.start("dbus-daemon", {"--session", "--nofork", "--nosyslog", "--print-address",
                                   "--address=unix:dir=" + m_folder.path()});
    if (!m_daemon.waitForStarted(startTimeout)) {
        m_errorText = "There is no session bus, and dbus-daemon cannot be started: " + m_daemon.errorString();
        return QString();
    }
    QByteArray output;
    while (!output.contains('\n') && m_daemon.waitForReadyRead(startTimeout))
        output += m_daemon.readAllStandardOutput();
    if (!output.contains('\n'))
        m_errorText =
            "There is no session bus, and dbus-daemon does not answer: " + m_daemon.readAllStandardError();
    return QString::fromLocal8Bit(output.left(output.indexOf('\n')));
}

} // namespace gallery
