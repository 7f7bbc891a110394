#include "ChildProcess.h"

#include <csignal>
#include <sys/prctl.h>
#include <unistd.h>

namespace gallery {

namespace {

const int endTimeout = 2000;

// What the child does before the program is loaded.
void prepareChild()
{
    ::prctl(PR_SET_PDEATHSIG, SIGTERM);
    // The terminal's interrupt is for this program, which ends its children in their order.
    ::setpgid(0, 0);
}

} // namespace

ChildProcess::ChildProcess(QObject *parent)
    : QProcess(parent)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    setChildProcessModifier(prepareChild);
#endif
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

#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
void ChildProcess::setupChildProcess()
{
    prepareChild();
}
#endif

} // namespace gallery
