#pragma once

#include "platform/bus/Export.h"

#include <QObject>

class ORNClientItem;

// The items that one named service publishes on the session bus. Client objects are shared by all callers of
// the process and live until the application object goes. To be used from the application's thread.
class GRAPH_BUS_EXPORT ORNClientInterface : public QObject
{
    Q_OBJECT

public:
    // The client object for the service `name`, shared by all callers; null, with one log line, for a name that no
    // service can have. The first call asks the service for all its items and waits for them: all such waits
    // together, 2 s at most. What comes later arrives by itself, also from a service that is not there yet. A call
    // that finds the service gone since, or just back, waits in the same way, so that nobody starts with the values
    // of its predecessor. The object belongs to the library: `parent` is not used.
    static ORNClientInterface *getSessionBusClient(const QString &name, QObject *parent);

    // A look-up: null when the service does not publish an item of that name (yet).
    ORNClientItem *getItem(const QString &itemName);

protected:
    using QObject::QObject;
};
