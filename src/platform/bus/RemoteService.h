#pragma once

#include "platform/bus/ArrayAssemblies.h"
#include "platform/bus/LinkedMember.h"
#include "platform/bus/BusMessage.h"
#include "platform/bus/Complaints.h"
#include "platform/bus/ItemStore.h"

#include <QByteArray>
#include <QString>

#include <memory>
#include <optional>

class ServiceFeed;

// The service on the session bus that feeds a client: asks for all items at the start and whenever the service
// or the bus comes back, and takes the changes in between. It asks again, at growing intervals, when no answer
// comes.
class RemoteService : public LinkedMember
{
public:
    RemoteService(const QString &serviceName, std::shared_ptr<ServiceFeed> feed);
    ~RemoteService() override;

    // Asks for all items, or for a bus to ask on.
    void ask();

    void handleOpened() override;
    void handleUnreachable(const QString &why) override;
    void handleLost() override;
    void handleRemoved() override;
    bool handleMessage(DBusMessage *message) override;
    TimePoint handleTime(TimePoint now) override;

private:
    void fetch();
    void handleAnswer(DBusMessage *message);
    void takeAnswer(DBusMessage *message, const graph::ItemsAnswer &answer);
    void handleOwnerChanged(DBusMessage *message);
    void takeNews(graph::ItemNews news);
    void takePart(graph::ItemNews *news);
    void takeAppended(const graph::ItemNews &news);
    void judge(const QString &itemName, ItemStore::Outcome outcome);
    void forgetOwner();
    void complain(Complaints::Kind kind, const QString &text);

    QString m_serviceName;
    QString m_busName;
    QByteArray m_path;
    QByteArray m_newsRule;
    QByteArray m_ownerRule;
    std::shared_ptr<ServiceFeed> m_feed;
    // The process whose items the client has. Names on the bus pass from one to another, and anyone may send
    // signals.
    QByteArray m_owner;
    quint64 m_serial = 0;
    std::optional<ArrayAssemblies> m_assemblies;
    Complaints m_complaints;
    bool m_isAsking = false;
    bool m_isToAskAgain = false; // what was appended did not fit
    TimePoint m_asked;
    TimePoint m_askAgain;
    std::chrono::milliseconds m_wait{};
};
