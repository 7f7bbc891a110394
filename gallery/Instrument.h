#pragma once

#include "ChildProcess.h"

#include <QDBusServiceWatcher>
#include <QElapsedTimer>
#include <QObject>
#include <QStringList>
#include <QTimer>

namespace gallery {

// The instrument of the page that is open. One that is on the bus already is used as it is, otherwise a
// simulated one starts as a process of its own, and again when it dies.
class Instrument : public QObject
{
    Q_OBJECT

public:
    explicit Instrument(const QString &program, QObject *parent = nullptr);

    // Ends the simulator that runs and sees to it that `service` is on the bus; an empty name means none is
    // wanted.
    void run(const QString &service, const QStringList &simulatorArguments);
    // True once its values can be read from the bus.
    bool isReady() const { return m_ready; }
    // Why there is no instrument; empty when there is one, or when it is about to be there.
    QString errorText() const { return m_errorText; }

signals:
    void changed();

private slots:
    void start();
    void handleEnd();
    void handleRegistered();
    void handleUnregistered();

private:
    QString m_program;
    QStringList m_arguments;
    ChildProcess m_process;
    QDBusServiceWatcher m_watcher;
    QTimer m_restartTimer;
    QElapsedTimer m_runTime;
    int m_restartDelay = 0;
    bool m_ready = false;
    QString m_errorText;
};

} // namespace gallery
