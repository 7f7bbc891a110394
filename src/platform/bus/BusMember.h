#pragma once

#include <QString>

#include <chrono>

struct DBusMessage;

// Something that takes part in the bus: a service that is followed or one that is published. Lives on the bus
// thread once it was added to the link.
class BusMember
{
public:
    using Clock = std::chrono::steady_clock;
    using TimePoint = Clock::time_point;

    virtual ~BusMember() = default;

    virtual void handleOpened() = 0;
    virtual void handleUnreachable(const QString &why) = 0;
    virtual void handleLost() = 0;
    // It is removed while the bus is there.
    virtual void handleRemoved() = 0;
    // True when the message, a call or a signal, was for this member.
    virtual bool handleMessage(DBusMessage *message) = 0;
    // Does what is due, and tells when something will be.
    virtual TimePoint handleTime(TimePoint now) = 0;
};
