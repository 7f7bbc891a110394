#include "platform/bus/ORNClientInterface.h"

#include "platform/bus/BusClient.h"
#include "platform/bus/BusRegistry.h"

ORNClientInterface *ORNClientInterface::getSessionBusClient(const QString &name, QObject *)
{
    BusClient *client = BusRegistry::instance().sharedClient(name);
    if (client)
        client->connectToService();
    return client;
}

ORNClientItem *ORNClientInterface::getItem(const QString &itemName)
{
    // The factory makes no other kind.
    return static_cast<BusClient *>(this)->item(itemName);
}
