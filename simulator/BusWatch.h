#pragma once

#include <QObject>

// Watches the session bus itself: without it the simulator has nobody to publish for.
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
