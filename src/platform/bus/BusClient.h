#pragma once

#include "platform/bus/BusItems.h"
#include "platform/bus/ORNClientInterface.h"

#include <QHash>
#include <QPointer>

class RemoteService;

// The client object behind ORNClientInterface: keeps the items of one service and fills them from a publisher
// in this process or else from the bus.
class BusClient : public ORNClientInterface
{
    Q_OBJECT

public:
    explicit BusClient(const QString &serviceName, QObject *parent = nullptr);
    ~BusClient() override;

    ORNClientItem *item(const QString &itemName) const { return m_items.value(itemName); }

    // Finds where the items come from unless that is known: a publisher in this process, else the bus.
    void connectToService();
    // A publisher in this process feeds the client from now on; or not any more.
    void enterProcess();
    void leaveProcess();

    // Make the item or change it. An item keeps its kind: a value for an array, or the reverse, is ignored.
    void setValue(const QString &itemName, const QVariant &value);
    void setVector(const QString &itemName, const QVector<double> &vector);
    void setItems(const BusItems &items);

private:
    void reportKind(const QString &itemName);

    QString m_serviceName;
    QHash<QString, ORNClientItem *> m_items;
    QPointer<RemoteService> m_remote;
    bool m_isConnected = false;
    bool m_kindReported = false;
};
