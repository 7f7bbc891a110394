#pragma once

#include "platform/bus/ORNClientInterface.h"
#include "platform/bus/ORNClientItem.h"

#include <QMap>
#include <QPointer>
#include <QString>

// Which bus items a data object follows: the client and the prefix of its address, and one item per property
// key. It owns neither client nor items.
class BusBinding
{
public:
    explicit BusBinding(QObject *follower);

    // The address that was accepted last: client name, comma, prefix of the item names.
    QString address() const { return m_address; }
    static bool isAddress(const QString &text) { return text.contains(QLatin1Char(',')); }
    // False, and nothing changed, for an address without a comma.
    bool setAddress(const QString &address);

    // Drops the item under the key and takes the one of the present address, null when the bus has none. The
    // item is not connected yet.
    ORNClientItem *takeItem(const QString &key);
    ORNVecDoubleClientItem *takeVectorItem(const QString &key);
    bool hasClient() const { return !m_client.isNull(); }

    // The property key in an item's full name: what follows the last underscore, without the type suffix.
    static QByteArray key(const ORNClientItem *item);
    static QByteArray vectorKey(const ORNClientItem *item);

private:
    ORNClientItem *take(const QString &key, ORNClientItem *item);

    QObject *m_follower;
    QString m_address;
    QString m_prefix;
    QPointer<ORNClientInterface> m_client;
    QMap<QString, QPointer<ORNClientItem>> m_items;
};
