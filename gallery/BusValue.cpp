#include "BusValue.h"

#include "platform/bus/ORNClientInterface.h"
#include "platform/bus/ORNClientItem.h"

#include <QStringList>

namespace gallery {

void BusValue::setDbusAddress(const QString &address)
{
    if (m_dbusAddress == address)
        return;
    m_dbusAddress = address;
    findItem();
    emit addressChanged();
}

void BusValue::setKey(const QString &key)
{
    if (m_key == key)
        return;
    m_key = key;
    findItem();
    emit addressChanged();
}

void BusValue::findItem()
{
    if (m_item)
        m_item->disconnect(this);
    m_item = nullptr;
    if (m_client)
        m_client->disconnect(this);
    m_client = nullptr;
    const QStringList fields = m_dbusAddress.split(',');
    if (fields.size() != 2 || m_key.isEmpty())
        return;
    m_client = ORNClientInterface::getSessionBusClient(fields.first(), this);
    if (!m_client)
        return;
    const QString name = fields.last() + '_' + m_key + ':';
    m_item = m_client->getItem(name);
    if (!m_item)
        m_item = m_client->getItem(name + "doubleARRAY:");
    if (!m_item) {
        // By name, since only this system's own client has the signal: the service, or the item, comes later.
        connect(m_client, SIGNAL(itemAdded(QString)), this, SLOT(findItem()));
        return;
    }
    connect(m_item, &ORNClientItem::valueChanged, this, &BusValue::takeValue);
    if (const auto *array = qobject_cast<ORNVecClientItem *>(m_item))
        connect(array, &ORNVecClientItem::sizeChanged, this, &BusValue::takeValue);
    takeValue();
}

void BusValue::takeValue()
{
    setValue(m_item->getValue());
}

} // namespace gallery
