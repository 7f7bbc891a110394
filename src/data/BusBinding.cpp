#include "data/BusBinding.h"

#include <QDebug>
#include <QVector>

namespace {

const QLatin1String vectorSuffix(":doubleARRAY:");
const QLatin1String scalarSuffix(":");

// The property key in an item's full name: what follows the last underscore, without the type suffix.
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
    m_writtenAddress = address.isNull() ? QString::fromLatin1("") : address;
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
    m_lateItems.setClient(client);
    m_sinks.clear();
    return true;
}

QVariant BusBinding::value(const QString &key) const
{
    const ORNClientItem *item = m_items.value(key);
    return item ? item->getValue() : QVariant();
}

void BusBinding::followItem(const QString &key)
{
    ORNClientItem *item = itemAtAddress(key + scalarSuffix, [this, key] { followItem(key); });
    replaceItem(key, item);
    if (!item)
        return;
    m_follower->setProperty(key.toLocal8Bit().constData(), item->getValue());
    QObject::connect(item, SIGNAL(valueChanged()), m_follower, SLOT(handleOrnItemValueChanged()));
}

void BusBinding::followVector(const QString &key, const Sink &sink)
{
    if (sink) {
        m_sinks.insert(key.toLocal8Bit(), sink);
        m_appended.setClient(m_client);
    }
    auto *item = qobject_cast<ORNVecDoubleClientItem *>(
        itemAtAddress(key + vectorSuffix, [this, key, sink] { followVector(key, sink); }));
    replaceItem(key, item);
    if (!m_client)
        return;
    if (!item) {
        qDebug() << m_follower << "No ORNVecDoubleClientItem for";
        return;
    }
    give(item, key.toLocal8Bit(), -1);
    QObject::connect(item, SIGNAL(sizeChanged()), m_follower, SLOT(handleOrnVecDoubleItemChanged()));
}

void BusBinding::takeValue(const QObject *sender)
{
    if (const auto *item = qobject_cast<const ORNClientItem *>(sender))
        m_follower->setProperty(keyInName(item, scalarSuffix).constData(), item->getValue());
}

void BusBinding::takeVector(const QObject *sender)
{
    const auto *item = qobject_cast<const ORNVecDoubleClientItem *>(sender);
    if (!item) {
        qDebug() << "in handleOrnVecDoubleItemChanged: sender() =" << sender;
        return;
    }
    give(item, keyInName(item, vectorSuffix), m_appended.take(item->getId()));
}

void BusBinding::give(const ORNVecDoubleClientItem *item, const QByteArray &key, int appended)
{
    // A copy, because the follower may be given another address by those who hear of the change.
    if (const Sink sink = m_sinks.value(key))
        sink(item->vector(), appended);
    else
        m_follower->setProperty(key.constData(), QVariant::fromValue(item->vector()));
}

ORNClientItem *BusBinding::itemAtAddress(const QString &name, const LateItems::Notice &whenAdded)
{
    if (!m_client)
        return nullptr;
    const QString fullName = m_prefix + QLatin1Char('_') + name;
    ORNClientItem *item = m_client->getItem(fullName);
    if (!item)
        m_lateItems.await(fullName, whenAdded);
    return item;
}

// The former item goes even when the present address has none for the key: else two sources would mix.
void BusBinding::replaceItem(const QString &key, ORNClientItem *item)
{
    const QPointer<ORNClientItem> former = m_items.take(key);
    if (former)
        former->disconnect(m_follower);
    if (item)
        m_items.insert(key, item);
}
