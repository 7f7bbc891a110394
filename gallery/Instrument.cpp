#include "Instrument.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusReply>

namespace gallery {

namespace {

const QString busPrefix = "org.toskorn.";
const int firstRestartDelay = 1000;
const int longestRestartDelay = 30000;
// An instrument that ran this long did not fail at its start: the next delay is the first one again.
const int healthyRunTime = 10000;

} // namespace

Instrument::Instrument(const QString &program, QObject *parent)
    : QObject(parent)
    , m_program(program)
    , m_restartDelay(firstRestartDelay)
{
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_restartTimer.setSingleShot(true);
    connect(&m_restartTimer, &QTimer::timeout, this, &Instrument::start);
    m_watcher.setConnection(QDBusConnection::sessionBus());
    connect(&m_watcher, &QDBusServiceWatcher::serviceRegistered, this, &Instrument::handleRegistered);
    connect(&m_watcher, &QDBusServiceWatcher::serviceUnregistered, this, &Instrument::handleUnregistered);
    connect(&m_process, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), this,
            &Instrument::handleEnd);
    connect(&m_process, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            handleEnd();
    });
}

void Instrument::run(const QString &service, const QStringList &simulatorArguments)
{
    m_restartTimer.stop();
    const qint64 stoppedProcess = m_process.processId();
    m_process.stop();
    m_arguments = simulatorArguments;
    m_restartDelay = firstRestartDelay;
    m_ready = false;
    m_errorText.clear();
    m_watcher.setWatchedServices({});
    const QDBusConnectionInterface *bus = QDBusConnection::sessionBus().interface();
    if (!service.isEmpty() && !bus)
        m_errorText = "There is no session bus.";
    if (!service.isEmpty() && bus) {
        const QString name = busPrefix + service;
        m_watcher.addWatchedService(name);
        const QDBusReply<uint> owner = bus->servicePid(name);
        // The name of a simulator that has just ended may still be there; its going is then the time to start.
        const bool isEnding = owner.isValid() && stoppedProcess != 0 && owner.value() == stoppedProcess;
        m_ready = owner.isValid() && !isEnding;
        if (!owner.isValid())
            start();
    }
    emit changed();
}

void Instrument::start()
{
    // Another instrument of that name may have come first.
    if (m_ready)
        return;
    m_runTime.start();
    m_process.start(m_program, m_arguments);
}

void Instrument::handleEnd()
{
    if (m_runTime.elapsed() > healthyRunTime)
        m_restartDelay = firstRestartDelay;
    m_restartTimer.start(m_restartDelay);
    m_restartDelay = qMin(2 * m_restartDelay, longestRestartDelay);
    m_errorText = m_process.error() == QProcess::FailedToStart
                      ? QString("The simulated instrument cannot be started: %1").arg(m_process.errorString())
                      : QString("The simulated instrument ended with status %1.").arg(m_process.exitCode());
    emit changed();
}

void Instrument::handleRegistered()
{
    m_ready = true;
    m_errorText.clear();
    emit changed();
}

void Instrument::handleUnregistered()
{
    m_ready = false;
    if (m_process.state() == QProcess::NotRunning && !m_restartTimer.isActive())
        start();
    emit changed();
}

} // namespace gallery
