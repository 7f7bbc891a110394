#pragma once

#include "platform/bus/BusMember.h"
#include "platform/bus/BusMessage.h"

#include <QByteArray>
#include <QHash>
#include <QString>

#include <functional>
#include <memory>
#include <vector>

struct DBusConnection;

// How long a bus may take, in milliseconds.
struct BusPatience
{
    int shortestWait = 100; // between attempts to connect
    int longestWait = 5000;
    int answer = 10000;  // to an attempt, or to the question whether the bus is still there
    int quiet = 5000;    // from one such question to the next
    int silence = 60000; // for its answer while other messages come
};

// The connection to the session bus that all members of this process share. A bus that goes, is not there yet
// or does not answer any more is looked for again, at growing intervals. Lives on the bus thread: messages come,
// are decoded and are destroyed here.
class BusLink
{
public:
    using Answer = std::function<void(DBusMessage *)>;

    // `wake` asks the application's thread to look at what has changed, `tell` gives it a line for the log.
    BusLink(const QByteArray &address, const BusPatience &patience, std::function<void()> wake,
            std::function<void(const QString &)> tell);
    ~BusLink();

    bool isOpen() const { return m_isOpen; }
    // Looks for a bus that is not there without waiting for the next attempt.
    void lookNow();
    void add(const std::shared_ptr<BusMember> &member);
    void remove(const std::shared_ptr<BusMember> &member);

    void send(graph::Message message);
    // The answer comes unless the bus is lost or the calls are forgotten before.
    void call(graph::Message message, const BusMember *caller, Answer answer);
    void forgetCalls(const BusMember *caller);
    void addMatch(const QByteArray &rule);
    void removeMatch(const QByteArray &rule);
    // What the bus has not taken yet.
    qint64 waitingBytes() const;
    qint64 *unfinishedBytes() { return &m_unfinishedBytes; }

    void wake() const { m_wake(); }
    void tell(const QString &line) const { m_tell(line); }

    // -1 without a connection.
    int descriptor() const;
    bool wantsToWrite() const;
    // Reads, writes and does what is due; gives the milliseconds until something is, -1 for never.
    int turn();

private:
    Q_DISABLE_COPY(BusLink)

    using TimePoint = BusMember::TimePoint;

    struct Call
    {
        const BusMember *caller = nullptr;
        Answer answer;
    };

    void connectToBus();
    void handleWelcome(DBusMessage *answer);
    void giveUp(const QString &why);
    void disconnect();
    void serve();
    bool take(DBusMessage *message);
    int handleTime();
    void lookAfterBus();
    bool isSilent(TimePoint now) const;
    void lose(bool isGone);
    void askForLife();
    graph::Message busCall(const char *method, const char *interface) const;

    QByteArray m_address;
    BusPatience m_patience;
    std::function<void()> m_wake;
    std::function<void(const QString &)> m_tell;
    DBusConnection *m_connection = nullptr;
    bool m_isOpen = false;
    bool m_isAsked = false;
    bool m_isRefused = false;
    std::vector<std::shared_ptr<BusMember>> m_members;
    QHash<quint32, Call> m_calls;
    qint64 m_unfinishedBytes = 0;
    int m_wait = 0;
    TimePoint m_nextAttempt;
    TimePoint m_lastHeard;
    TimePoint m_lastAsked;
    TimePoint m_lastAlive;
};
