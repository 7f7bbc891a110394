#pragma once

#include <QObject>

// Watches the session bus itself: without a bus the simulator has no clients.
class BusWatch : public QObject
{
    Q_OBJECT

public:
    explicit BusWatch(QObject *parent = nullptr);

    // Empty while there is a bus.
    QString problem() const;

signals:
    void lost();
};
