#pragma once

#include "platform/bus/BusLink.h"

#include <functional>
#include <memory>
#include <thread>

#include <QStringList>

// The thread on which the connection to the bus lives. Nothing that a bus or a service does, or does not do,
// keeps another thread waiting.
class BusThread
{
public:
    using Task = std::function<void(BusLink &)>;

    // `wake` is called on the bus thread when there is something to look at, until the object is destroyed.
    BusThread(const BusPatience &patience, std::function<void()> wake);
    ~BusThread();

    void post(Task task);
    // Makes the members look at what has changed.
    void rouse();
    // Lines for the log.
    QStringList takeLines();

private:
    struct Shared;

    Q_DISABLE_COPY(BusThread)

    static void run(const std::shared_ptr<Shared> &shared, const QByteArray &address,
                    const BusPatience &patience);

    std::shared_ptr<Shared> m_shared;
    std::thread m_thread;
};
