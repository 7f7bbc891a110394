#pragma once

#include <QObject>

class ORNClientItem;

// The items that one named service publishes on the session bus.
class ORNClientInterface : public QObject
{
    Q_OBJECT

public:
    // The client object for the service `name`; the same object is shared by all callers of the process. Items are
    // fetched in one round trip when the client is first asked for (2 s at most).
    static ORNClientInterface *getSessionBusClient(const QString &name, QObject *parent);

    // Null when the service does not publish an item of that name.
    ORNClientItem *getItem(const QString &itemName);
};
