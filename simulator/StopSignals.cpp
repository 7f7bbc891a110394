#include "simulator/StopSignals.h"

#include <QSocketNotifier>

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace {

// A signal handler may do little more than write. Both ends stay open as long as the process.
int pipeEnds[2] = {-1, -1};
pid_t owner = 0;

void tellOwner(int number)
{
    // A child that does not run its own program yet shares the pipe, but the signal is for the child.
    if (getpid() != owner) {
        raise(number);
        return;
    }
    const int error = errno;
    const char byte = 0;
    const ssize_t written = write(pipeEnds[1], &byte, 1);
    // A full pipe is as good as another byte.
    static_cast<void>(written);
    errno = error;
}

// What the caller of the program ignores, as nohup does, stays ignored.
void handleUnlessIgnored(int number)
{
    struct sigaction former = {};
    sigaction(number, nullptr, &former);
    if (former.sa_handler == SIG_IGN)
        return;
    struct sigaction action = {};
    action.sa_handler = tellOwner;
    action.sa_flags = SA_RESTART | int(SA_RESETHAND);
    sigaction(number, &action, nullptr);
}

} // namespace

StopSignals::StopSignals(QObject *parent)
    : QObject(parent)
{
    owner = getpid();
    // Without the pipe the signals keep their default action, so that the process can still be ended.
    if (pipe2(pipeEnds, O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    for (const int number : {SIGINT, SIGTERM, SIGHUP})
        handleUnlessIgnored(number);
}

StopSignals::~StopSignals() = default;

void StopSignals::listen()
{
    if (pipeEnds[0] < 0)
        return;
    m_notifier = std::make_unique<QSocketNotifier>(pipeEnds[0], QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, [this] {
        m_notifier->setEnabled(false);
        emit stopRequested();
    });
}
