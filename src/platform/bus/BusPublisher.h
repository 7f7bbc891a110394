#pragma once

#include "platform/bus/BusItems.h"

#include <QObject>

class PublishedObject;

// The publishing side of the bus: owns the items of one named service. Clients in the same process see it at
// once and without any bus daemon; publish() also offers it on the session bus. One publisher of a name in a
// process; a second one publishes nothing and says so. To be used from the application's thread.
class BusPublisher : public QObject
{
    Q_OBJECT

public:
    explicit BusPublisher(const QString &serviceName, QObject *parent = nullptr);
    ~BusPublisher() override;

    const BusItems &items() const { return m_items; }

    // Registers the service on the session bus as "org.toskorn." + its name. False when there is no bus or
    // the name is taken; one log line says why.
    bool publish();

    // Create the item or change its value; clients are told when it differs. Item names are full names such
    // as "trace_xLabel:" and "trace_yData:doubleARRAY:".

    // Numbers, bool, QString and QStringList; every other type is refused with a log line.
    void setValue(const QString &itemName, const QVariant &value);
    // Clients in the process share the vector; on the bus it travels as one block.
    void setVector(const QString &itemName, const QVector<double> &vector);

private:
    QString m_serviceName;
    BusItems m_items;
    PublishedObject *m_published = nullptr; // a child
    bool m_isActive = false;
};
