#include "data/BusBinding.h"

namespace {

const QLatin1String vectorSuffix(":doubleARRAY:");
const QLatin1String scalarSuffix(":");

QByteArray keyInName(const ORNClientItem *item, QLatin1String suffix)
{
    const QString name = item->getId();
    // After the last underscore, because a prefix may contain some.
    return name.mid(name.lastIndexOf(QLatin1Char('_')) + 1).remove(suffix).toLocal8Bit();
}

} // namespace

BusBinding::BusBinding(QObject *follower)
    : m_follower(follower)
{
}

bool BusBinding::setAddress(const QString &address)
{
    if (!isAddress(address))
        return false;
    const QStringList fields = address.split(QLatin1Char(','));
    m_address = address;
    m_prefix = fields.at(1);
    ORNClientInterface *client =
        fields.at(0).isEmpty() ? nullptr : ORNClientInterface::getSessionBusClient(fields.at(0), m_follower);
    if (m_client && m_client != client)
        m_client->disconnect(m_follower);
    m_client = client;
    return true;
}

ORNClientItem *BusBinding::takeItem(const QString &key)
{
    return take(key,
                m_client ? m_client->getItem(m_prefix + QLatin1Char('_') + key + scalarSuffix) : nullptr);
}

ORNVecDoubleClientItem *BusBinding::takeVectorItem(const QString &key)
{
    ORNClientItem *item =
        m_client ? m_client->getItem(m_prefix + QLatin1Char('_') + key + vectorSuffix) : nullptr;
    auto *vectorItem = qobject_cast<ORNVecDoubleClientItem *>(item);
    take(key, vectorItem);
    return vectorItem;
}

// The former item goes even when the present address has none for the key: else two sources would mix.
ORNClientItem *BusBinding::take(const QString &key, ORNClientItem *item)
{
    const QPointer<ORNClientItem> former = m_items.take(key);
    if (former)
        former->disconnect(m_follower);
    if (item)
        m_items.insert(key, item);
    return item;
}

QByteArray BusBinding::key(const ORNClientItem *item)
{
    return keyInName(item, scalarSuffix);
}

QByteArray BusBinding::vectorKey(const ORNClientItem *item)
{
    return keyInName(item, vectorSuffix);
}
