#include "data/AppendedCount.h"

#include "platform/bus/ORNClientInterface.h"

#include <utility>

void AppendedCount::setClient(ORNClientInterface *client)
{
    if (m_client == client)
        return;
    if (m_client)
        m_client->disconnect(this);
    m_client = client;
    m_count = -1;
    // Not every bus library has the signal: without it arrays are taken as a whole.
    if (client && client->metaObject()->indexOfSignal("arrayAppended(QString,int)") >= 0)
        connect(client, SIGNAL(arrayAppended(QString, int)), this, SLOT(handleArrayAppended(QString, int)));
}

int AppendedCount::take(const QString &itemName)
{
    return m_itemName == itemName ? std::exchange(m_count, -1) : -1;
}

void AppendedCount::handleArrayAppended(const QString &itemName, int count)
{
    m_itemName = itemName;
    m_count = count;
}
