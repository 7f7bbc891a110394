#pragma once

#include <QObject>
#include <QVariant>
#include <QVector>

// The publishing side of the bus: owns the items of one named service. Clients in the same process see it without any
// bus daemon; publish() also offers it on the session bus.
class BusPublisher : public QObject
{
    Q_OBJECT

public:
    explicit BusPublisher(const QString &serviceName, QObject *parent = nullptr);
    ~BusPublisher() override;

    // Registers the service on the session bus. False when there is no bus or the name is taken; one log line says why.
    bool publish();

    // Create the item or change its value; clients are told when the value differs. Item names are full names such as
    // "trace_xLabel:" and "trace_yData:doubleARRAY:".
    void setValue(const QString &itemName, const QVariant &value);
    // The array travels as one block.
    void setVector(const QString &itemName, const QVector<double> &vector);
};
