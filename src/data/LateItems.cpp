#include "data/LateItems.h"

#include "platform/bus/ORNClientInterface.h"

void LateItems::setClient(ORNClientInterface *client)
{
    m_expected.clear();
    if (m_client == client)
        return;
    if (m_client)
        m_client->disconnect(this);
    m_client = client;
    // Not every bus library has the signal.
    if (client && client->metaObject()->indexOfSignal("itemAdded(QString)") >= 0)
        connect(client, SIGNAL(itemAdded(QString)), this, SLOT(handleItemAdded(QString)));
}

void LateItems::await(const QString &itemName, const Notice &notice)
{
    m_expected.insert(itemName, notice);
}

void LateItems::handleItemAdded(const QString &itemName)
{
    // Taken out first: it may be awaited again.
    const Notice notice = m_expected.take(itemName);
    if (notice)
        notice();
}
