#include "Instrument.h"

namespace gallery {

namespace {

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
    connect(&m_process, &QProcess::readyReadStandardOutput, this, &Instrument::readOutput);
    connect(&m_process, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), this, &Instrument::handleEnd);
    connect(&m_process, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            handleEnd();
    });
}

void Instrument::run(const QStringList &arguments)
{
    m_restartTimer.stop();
    m_process.stop();
    m_arguments = arguments;
    m_restartDelay = firstRestartDelay;
    m_ready = false;
    m_errorText.clear();
    if (!m_arguments.isEmpty())
        start();
    emit changed();
}

void Instrument::start()
{
    m_runTime.start();
    m_process.start(m_program, m_arguments);
}

void Instrument::readOutput()
{
    // Its first line says that everything is on the bus.
    const bool saidReady = m_process.readAllStandardOutput().contains('\n');
    if (m_ready || !saidReady)
        return;
    m_ready = true;
    m_errorText.clear();
    emit changed();
}

void Instrument::handleEnd()
{
    if (m_runTime.elapsed() > healthyRunTime)
        m_restartDelay = firstRestartDelay;
    m_restartTimer.start(m_restartDelay);
    m_restartDelay = qMin(2 * m_restartDelay, longestRestartDelay);
    m_ready = false;
    m_errorText = m_process.error() == QProcess::FailedToStart
        ? QString("The simulated instrument cannot be started: %1").arg(m_process.errorString())
        : QString("The simulated instrument ended with status %1.").arg(m_process.exitCode());
    emit changed();
}

} // namespace gallery
