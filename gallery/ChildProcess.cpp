#include "ChildProcess.h"

#include <csignal>
#include <sys/prctl.h>
#include <unistd.h>

namespace gallery {

namespace {

const int endTimeout = 2000;

} // namespace

ChildProcess::ChildProcess(QObject *parent)
    : QProcess(parent)
{
}

ChildProcess::~ChildProcess()
{
    stop();
}

void ChildProcess::stop()
{
    if (state() == NotRunning)
        return;
    // An end that was asked for is not a crash, so nobody is told of it.
    const QSignalBlocker quiet(this);
    terminate();
    if (waitForFinished(endTimeout))
        return;
    kill();
    waitForFinished(endTimeout);
}

void ChildProcess::setupChildProcess()
{
    ::prctl(PR_SET_PDEATHSIG, SIGTERM);
    // The terminal's interrupt is for this program, which ends its children in their order.
    ::setpgid(0, 0);
}

} // namespace gallery
