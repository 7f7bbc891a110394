#include "StopSignals.h"

#include <QSocketNotifier>

#include <csignal>
#include <sys/signalfd.h>
#include <unistd.h>

StopSignals::StopSignals(QObject *parent)
    : QObject(parent)
{
    sigset_t stopping;
    sigemptyset(&stopping);
    sigaddset(&stopping, SIGINT);
    sigaddset(&stopping, SIGTERM);
    m_descriptor = signalfd(-1, &stopping, SFD_NONBLOCK | SFD_CLOEXEC);
    // Without the descriptor the signals keep their default action, so that the process can still be ended.
    if (m_descriptor < 0)
        return;
    sigprocmask(SIG_BLOCK, &stopping, nullptr);
    m_notifier = new QSocketNotifier(m_descriptor, QSocketNotifier::Read, this);
    connect(m_notifier, &QSocketNotifier::activated, this, [this] {
        m_notifier->setEnabled(false);
        emit stopRequested();
    });
}

StopSignals::~StopSignals()
{
    delete m_notifier;
    if (m_descriptor >= 0)
        close(m_descriptor);
}
