#pragma once

#include "platform/bus/BusItems.h"
#include "platform/bus/Export.h"

#include <QObject>

#include <memory>

class PublishedObject;
class ServiceFeed;

// The publishing side of the bus: owns the items of one named service. Clients in the same process see it at
// once and without any bus daemon; publish() also offers it on the session bus. One publisher of a name in a
// process; a second one publishes nothing and says so. To be used from the application's thread.
class GRAPH_BUS_EXPORT BusPublisher : public QObject
{
    Q_OBJECT

public:
    explicit BusPublisher(const QString &serviceName, QObject *parent = nullptr);
    ~BusPublisher() override;

    const BusItems &items() const { return m_items; }

    // Registers the service on the session bus as "org.toskorn." + its name, and again whenever the bus comes
    // back. False when there is no bus, it does not answer within 5 s, or the name is taken; one log line says
    // why.
    bool publish();

    // Create the item or change its value; clients are told when it differs. Item names are full names such
    // as "trace_xLabel:" and "trace_yData:doubleARRAY:". While the bus takes the changes more slowly than they
    // come, only the newest value of an item is sent. Names of more than 255 characters, texts of more than a
    // million, and arrays of more than 2^24 elements are refused with a log line.

    // Numbers, bool, QString and QStringList; every other type is refused with a log line.
    void setValue(const QString &itemName, const QVariant &value);
    // Clients in the process share the vector; on the bus it travels as one block.
    void setVector(const QString &itemName, const QVector<double> &vector);
    // Adds to the end of the array, which then keeps its newest `capacity` elements. Only `elements` travel on
    // the bus; what is not sent yet is joined.
    void append(const QString &itemName, const QVector<double> &elements, int capacity = 1 << 20);

private:
    bool mayBeArray(const QString &itemName, int size) const;

    QString m_serviceName;
    BusItems m_items;
    // What the bus thread sends.
    std::shared_ptr<ServiceFeed> m_feed;
    std::shared_ptr<PublishedObject> m_published;
    bool m_isActive = false;
};
