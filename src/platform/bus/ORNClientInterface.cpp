#include "platform/bus/ORNClientInterface.h"

ORNClientInterface *ORNClientInterface::getSessionBusClient(const QString &, QObject *)
{
    return nullptr;
}

ORNClientItem *ORNClientInterface::getItem(const QString &)
{
    return nullptr;
}
