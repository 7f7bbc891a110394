#pragma once

#include "ChildProcess.h"

#include <QElapsedTimer>
#include <QObject>
#include <QStringList>
#include <QTimer>

namespace gallery {

// The simulated instrument of the page that is open: a process of its own, started again when it dies.
class Instrument : public QObject
{
    Q_OBJECT

public:
    explicit Instrument(const QString &program, QObject *parent = nullptr);

    // Ends the instrument that runs and starts one with these arguments; none starts for an empty list.
    void run(const QStringList &arguments);
    // True once its values can be read from the bus.
    bool isReady() const { return m_ready; }
    // Why there is no instrument; empty when there is one, or when it is about to be there.
    QString errorText() const { return m_errorText; }

signals:
    void changed();

private slots:
    void start();
    void readOutput();
    void handleEnd();

private:
    QString m_program;
    QStringList m_arguments;
    ChildProcess m_process;
    QTimer m_restartTimer;
    QElapsedTimer m_runTime;
    int m_restartDelay = 0;
    bool m_ready = false;
    QString m_errorText;
};

} // namespace gallery
