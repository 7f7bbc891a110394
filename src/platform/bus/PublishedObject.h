#pragma once

#include "platform/bus/LinkedMember.h"
#include "platform/bus/BusMessage.h"
#include "platform/bus/ItemStore.h"

#include <QByteArray>
#include <QString>

#include <deque>
#include <memory>

class ServiceFeed;

// A publisher's object on the session bus. Its items come through the feed: of each only the newest value waits
// while the bus is slow, and a bus that comes back is given the service again.
class PublishedObject : public LinkedMember
{
public:
    PublishedObject(const QString &serviceName, std::shared_ptr<ServiceFeed> feed);

    void handleOpened() override;
    void handleUnreachable(const QString &why) override;
    void handleLost() override;
    void handleRemoved() override;
    bool handleMessage(DBusMessage *message) override;
    TimePoint handleTime(TimePoint now) override;

private:
    bool mayWrite() const;
    void takeName(DBusMessage *answer);
    void answer(DBusMessage *request);
    void answerWaiting();
    void broadcast(const ItemStore::Changes &changes);
    void sendVector(const QByteArray &receiver, const QString &itemName, const QVector<double> &vector);
    void sendAppended(const ItemStore::Change &change);
    void introduce(DBusMessage *request);

    QString m_serviceName;
    QString m_busName;
    QByteArray m_path;
    std::shared_ptr<ServiceFeed> m_feed;
    std::deque<graph::Message> m_waiting; // requests
    quint64 m_serial = 0;
    bool m_wasPublished = false;
    bool m_isPublished = false;
};
