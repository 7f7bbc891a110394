#include "platform/bus/BusLink.h"

#include <dbus/dbus.h>

#include <poll.h>

#include <algorithm>

namespace {

using std::chrono::milliseconds;

// Messages until others have their turn: what is to be sent, new members, timers.
constexpr int messagesPerTurn = 256;
constexpr int readsPerTurn = 64;
// The greeting is a conversation: after each answer there is something to say.
constexpr int greetingReads = 3;
constexpr int greetingStep = 100;       // ms
constexpr qint64 longestWait = 3600000; // ms

DBusHandlerResult handled(bool isHandled)
{
    return isHandled ? DBUS_HANDLER_RESULT_HANDLED : DBUS_HANDLER_RESULT_NOT_YET_HANDLED;
}

bool isReadable(int descriptor)
{
    pollfd what{descriptor, POLLIN, 0};
    return poll(&what, 1, 0) > 0;
}

} // namespace

BusLink::BusLink(const QByteArray &address, const BusPatience &patience, std::function<void()> wake,
                 std::function<void(const QString &)> tell)
    : m_address(address)
    , m_patience(patience)
    , m_wake(std::move(wake))
    , m_tell(std::move(tell))
    , m_wait(patience.shortestWait)
{
}

BusLink::~BusLink()
{
    // What was published last is to arrive, but a bus that takes nothing may not hold up the end.
    const TimePoint end = BusMember::Clock::now() + milliseconds(500);
    while (m_isOpen && dbus_connection_has_messages_to_send(m_connection) && BusMember::Clock::now() < end &&
           dbus_connection_read_write(m_connection, 20)) {
    }
    disconnect();
}

void BusLink::lookNow()
{
    if (!m_connection)
        m_nextAttempt = {};
}

void BusLink::add(const std::shared_ptr<BusMember> &member)
{
    m_members.push_back(member);
    if (m_isOpen)
        member->handleOpened();
    else
        lookNow();
}

void BusLink::remove(const std::shared_ptr<BusMember> &member)
{
    const auto it = std::find(m_members.begin(), m_members.end(), member);
    if (it == m_members.end())
        return;
    forgetCalls(member.get());
    if (m_isOpen)
        member->handleRemoved();
    m_members.erase(it);
}

void BusLink::send(graph::Message message)
{
    if (m_connection && message)
        dbus_connection_send(m_connection, message.get(), nullptr);
}

void BusLink::call(graph::Message message, const BusMember *caller, Answer answer)
{
    dbus_uint32_t serial = 0;
    if (m_connection && message && dbus_connection_send(m_connection, message.get(), &serial))
        m_calls.insert(serial, {caller, std::move(answer)});
}

void BusLink::forgetCalls(const BusMember *caller)
{
    for (auto it = m_calls.begin(); it != m_calls.end();)
        it = it->caller == caller ? m_calls.erase(it) : ++it;
}

void BusLink::addMatch(const QByteArray &rule)
{
    graph::Message message = busCall("AddMatch", DBUS_INTERFACE_DBUS);
    const char *text = rule.constData();
    dbus_message_append_args(message.get(), DBUS_TYPE_STRING, &text, DBUS_TYPE_INVALID);
    dbus_message_set_no_reply(message.get(), true);
    send(std::move(message));
}

void BusLink::removeMatch(const QByteArray &rule)
{
    graph::Message message = busCall("RemoveMatch", DBUS_INTERFACE_DBUS);
    const char *text = rule.constData();
    dbus_message_append_args(message.get(), DBUS_TYPE_STRING, &text, DBUS_TYPE_INVALID);
    dbus_message_set_no_reply(message.get(), true);
    send(std::move(message));
}

qint64 BusLink::waitingBytes() const
{
    return m_connection ? qint64(dbus_connection_get_outgoing_size(m_connection)) : 0;
}

int BusLink::descriptor() const
{
    int descriptor = -1;
    return m_connection && dbus_connection_get_unix_fd(m_connection, &descriptor) ? descriptor : -1;
}

bool BusLink::wantsToWrite() const
{
    // Before that the socket takes more, but no messages.
    return m_connection && dbus_connection_get_is_authenticated(m_connection) &&
           dbus_connection_has_messages_to_send(m_connection);
}

int BusLink::turn()
{
    const TimePoint begin = BusMember::Clock::now();
    if (!m_connection && !m_members.empty() && begin >= m_nextAttempt)
        connectToBus();
    serve();
    lookAfterBus();
    const int wait = handleTime();
    if (m_connection && dbus_connection_get_dispatch_status(m_connection) == DBUS_DISPATCH_DATA_REMAINS)
        return 0;
    return wait;
}

// Has the members do what is due; gives the milliseconds until something is, -1 for never.
int BusLink::handleTime()
{
    const TimePoint now = BusMember::Clock::now();
    TimePoint due = TimePoint::max();
    if (m_connection)
        due = now + milliseconds(m_isOpen ? std::min(m_patience.quiet, m_patience.answer) : greetingStep);
    else if (!m_members.empty())
        due = m_nextAttempt;
    const auto members = m_members;
    for (const auto &member : members)
        due = std::min(due, member->handleTime(now));
    if (due == TimePoint::max())
        return -1;
    const auto wait = std::chrono::duration_cast<milliseconds>(due - now).count();
    return int(std::clamp<qint64>(wait + 1, 0, longestWait));
}

void BusLink::connectToBus()
{
    DBusError error;
    dbus_error_init(&error);
    m_connection = dbus_connection_open_private(m_address.constData(), &error);
    if (!m_connection) {
        const QString why = QString::fromUtf8(error.message);
        dbus_error_free(&error);
        giveUp(why);
        return;
    }
    const auto filter = [](DBusConnection *, DBusMessage *message, void *self) {
        return handled(static_cast<BusLink *>(self)->take(message));
    };
    dbus_connection_add_filter(m_connection, filter, this, nullptr);
    m_lastAsked = m_lastHeard = m_lastAlive = BusMember::Clock::now();
    m_isAsked = true;
    call(busCall("Hello", DBUS_INTERFACE_DBUS), nullptr,
         [this](DBusMessage *answer) { handleWelcome(answer); });
}

void BusLink::handleWelcome(DBusMessage *answer)
{
    const char *name = nullptr;
    if (!dbus_message_get_args(answer, nullptr, DBUS_TYPE_STRING, &name, DBUS_TYPE_INVALID)) {
        m_isRefused = true; // nothing may be disconnected within its own message
        return;
    }
    dbus_bus_set_unique_name(m_connection, name);
    m_isOpen = true;
    m_isAsked = false;
    m_lastAlive = BusMember::Clock::now();
    m_wait = m_patience.shortestWait;
    const auto members = m_members;
    for (const auto &member : members)
        member->handleOpened();
}

// The attempt to connect has failed.
void BusLink::giveUp(const QString &why)
{
    disconnect();
    m_nextAttempt = BusMember::Clock::now() + milliseconds(m_wait);
    m_wait = std::min(2 * m_wait, m_patience.longestWait);
    const auto members = m_members;
    for (const auto &member : members)
        member->handleUnreachable(why);
}

void BusLink::disconnect()
{
    if (!m_connection)
        return;
    m_isOpen = false;
    m_isAsked = false;
    m_isRefused = false;
    m_calls.clear();
    DBusConnection *connection = std::exchange(m_connection, nullptr);
    dbus_connection_close(connection);
    // The messages that it left, or they would stay in memory.
    while (dbus_connection_dispatch(connection) == DBUS_DISPATCH_DATA_REMAINS) {
    }
    dbus_connection_unref(connection);
}

void BusLink::serve()
{
    const int socket = descriptor();
    int messages = 0;
    for (int reads = 0; m_connection && reads < readsPerTurn && messages < messagesPerTurn; ++reads) {
        dbus_connection_read_write(m_connection, 0);
        while (messages < messagesPerTurn &&
               dbus_connection_get_dispatch_status(m_connection) == DBUS_DISPATCH_DATA_REMAINS) {
            dbus_connection_dispatch(m_connection);
            ++messages;
        }
        const bool isGreeting = !m_isOpen && reads < greetingReads;
        if (!dbus_connection_get_is_connected(m_connection) || (!isGreeting && !isReadable(socket)))
            break;
    }
}

bool BusLink::take(DBusMessage *message)
{
    if (!m_connection)
        return true;
    m_lastHeard = BusMember::Clock::now();
    const int type = dbus_message_get_type(message);
    if (type == DBUS_MESSAGE_TYPE_METHOD_RETURN || type == DBUS_MESSAGE_TYPE_ERROR) {
        const auto it = m_calls.find(dbus_message_get_reply_serial(message));
        if (it == m_calls.end())
            return false;
        const Answer answer = it->answer;
        m_calls.erase(it);
        answer(message);
        return true;
    }
    for (size_t i = 0; i < m_members.size(); ++i) {
        const std::shared_ptr<BusMember> member = m_members[i];
        if (member->handleMessage(message))
            return true;
    }
    return false;
}

// A connection may look alive while the bus does nothing: it is asked.
void BusLink::lookAfterBus()
{
    if (!m_connection)
        return;
    const TimePoint now = BusMember::Clock::now();
    const bool isGone = m_isRefused || !dbus_connection_get_is_connected(m_connection);
    if (isGone || isSilent(now))
        lose(isGone);
    else if (!m_isAsked && now - m_lastAlive >= milliseconds(m_patience.quiet))
        askForLife();
}

bool BusLink::isSilent(TimePoint now) const
{
    return m_isAsked && now - m_lastAsked > milliseconds(m_patience.answer) &&
           (now - m_lastHeard > milliseconds(m_patience.answer) ||
            now - m_lastAsked > milliseconds(m_patience.silence));
}

// Of one that has not gone no answer comes.
void BusLink::lose(bool isGone)
{
    if (!m_isOpen) {
        giveUp(isGone ? QStringLiteral("it has refused the connection")
                      : QStringLiteral("it does not answer"));
        return;
    }
    m_tell(isGone ? QStringLiteral("the session bus has gone; values stay as they are until it is back")
                  : QStringLiteral("the session bus does not answer; values stay as they are until it does"));
    disconnect();
    m_nextAttempt = BusMember::Clock::now() + milliseconds(m_wait);
    const auto members = m_members;
    for (const auto &member : members)
        member->handleLost();
    m_wake();
}

void BusLink::askForLife()
{
    m_isAsked = true;
    m_lastAsked = BusMember::Clock::now();
    call(busCall("Ping", DBUS_INTERFACE_PEER), nullptr, [this](DBusMessage *) {
        m_isAsked = false;
        m_lastAlive = BusMember::Clock::now();
    });
}

graph::Message BusLink::busCall(const char *method, const char *interface) const
{
    return graph::Message(dbus_message_new_method_call(DBUS_SERVICE_DBUS, DBUS_PATH_DBUS, interface, method));
}
