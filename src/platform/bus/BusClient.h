#pragma once

#include "platform/bus/BusItems.h"
#include "platform/bus/BusRecipient.h"
#include "platform/bus/Complaints.h"
#include "platform/bus/ItemStore.h"
#include "platform/bus/ORNClientInterface.h"
#include "platform/bus/ServiceFeed.h"

#include <QHash>
#include <QSet>

#include <memory>

class BusSources;
class ORNClientItem;
class RemoteService;

// The client object behind ORNClientInterface: has the items of one service that were asked for, and fills them
// from a publisher in this process or else from the bus.
//
// Its signals are found by name through the meta-object: the device's own library need not have them.
class BusClient : public ORNClientInterface, public BusRecipient
{
    Q_OBJECT

public:
    BusClient(const QString &serviceName, BusSources &sources);
    ~BusClient() override;

    // Null when there is none; then itemAdded tells when it comes.
    ORNClientItem *item(const QString &itemName);

    // Whether somebody feeds the items, as far as is known.
    Q_INVOKABLE bool isServiceThere() const;

    // Finds where the items come from unless that is known: a publisher in this process, else the bus. Waits for
    // the answer of a service on the bus, as far as there is time.
    void connectToService();
    // A publisher in this process feeds the client from now on; or not any more.
    void enterProcess();
    void leaveProcess();

    // Make the item or change it. An item keeps its kind: a value for an array, or the reverse, is ignored.
    void setValue(const QString &itemName, const QVariant &value);
    // The newest `appended` elements are new; less than 0 for an array that was replaced.
    void setVector(const QString &itemName, const QVector<double> &vector, qint64 appended = -1);

    bool deliver(const QDeadlineTimer &end) override;

signals:
    // An item that was asked for in vain is there.
    void itemAdded(const QString &itemName);
    // Before the item's sizeChanged(): its newest `count` elements are new, and those before are as they were,
    // except that the oldest may have been dropped.
    void arrayAppended(const QString &itemName, int count);

private:
    enum Source { None, Process, Bus };

    void setItems(const BusItems &items);
    void follow();
    void unfollow();
    void await();
    void tellTrouble(const ServiceFeed::Status &status, bool hasWaited);
    void apply(const ItemStore::Change &change);
    template <typename Item> Item *itemOfKind(const QString &itemName);
    void tellAdded(const QString &itemName);

    QString m_serviceName;
    BusSources &m_sources;
    Source m_source = None;
    QHash<QString, ORNClientItem *> m_items;
    QSet<QString> m_wanted; // names asked for in vain
    std::shared_ptr<ServiceFeed> m_feed;
    std::shared_ptr<RemoteService> m_remote; // used by the bus thread only
    ItemStore::Changes m_changes;
    int m_nextChange = 0;
    Complaints m_complaints;
    bool m_kindReported = false;
    bool m_isStartTold = false;
    bool m_isOverdue = false; // the last wait was in vain
};
