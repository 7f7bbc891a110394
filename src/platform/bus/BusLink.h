#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QString>
#include <QTimer>

// The connection to the session bus that all remote services of the process share. A bus that goes, or is not
// there yet, is looked for again until it is back, at growing intervals; while there is one, nothing is
// looked for.
class BusLink : public QObject
{
    Q_OBJECT

public:
    BusLink();
    ~BusLink() override;

    // True when there is a bus; looks for it at once if there was none.
    bool open();
    const QDBusConnection &bus() const { return m_bus; }
    // Why the last attempt failed.
    QString errorText() const { return m_errorText; }

signals:
    void opened();
    void lost();

private slots:
    void handleDisconnected();
    void lookAgain();

private:
    bool connectToBus();
    void waitForBus();

    QString m_address;
    QString m_errorText;
    QDBusConnection m_bus;
    QTimer m_timer;
};
