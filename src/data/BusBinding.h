#pragma once

#include "data/AppendedCount.h"
#include "data/LateItems.h"
#include "platform/bus/ORNClientInterface.h"
#include "platform/bus/ORNClientItem.h"

#include <QMap>
#include <QPointer>
#include <QString>
#include <QVariant>
#include <QVector>

#include <functional>

// The bus items that a data object follows: the client and the prefix of its address, and one item per property
// key, whose value is copied into the property. It makes and ends the connections; client and items belong to
// the bus library.
//
// The follower has the slots handleOrnItemValueChanged() and handleOrnVecDoubleItemChanged(), which hand their
// sender to the two take functions.
class BusBinding
{
public:
    // Takes an array, of which the last `appended` elements are new; -1 when all of them may be.
    using Sink = std::function<void(const QVector<double> &array, int appended)>;

    explicit BusBinding(QObject *follower);

    // The address that was accepted last: client name, comma, prefix of the item names.
    QString address() const { return m_address; }
    // What was written last, accepted or not; null when nothing was.
    QString writtenAddress() const { return m_writtenAddress; }
    // The client of that address; null for an address without a service.
    ORNClientInterface *client() const { return m_client; }
    // The full names of the items that are followed and not there.
    QStringList missingItems() const { return m_lateItems.names(); }
    static bool isAddress(const QString &text) { return text.contains(QLatin1Char(',')); }
    // That of the item that is followed for the key, whether the property took it or not; invalid without one.
    QVariant value(const QString &key) const;
    // False, and nothing changed, for an address without a comma.
    bool setAddress(const QString &address);

    // Follow the item of the present address for the key from now on, and no longer the one that it had before.
    // Without such an item the property stays as it is until there is one.
    void followItem(const QString &key);
    void followVector(const QString &key, const Sink &sink = {});

    // Copy the value of an item that has changed. Any object may be the sender: what is no item is ignored.
    void takeValue(const QObject *sender);
    void takeVector(const QObject *sender);

private:
    ORNClientItem *itemAtAddress(const QString &name, const LateItems::Notice &whenAdded);
    void replaceItem(const QString &key, ORNClientItem *item);
    void give(const ORNVecDoubleClientItem *item, const QByteArray &key, int appended);

    QObject *m_follower;
    QString m_address;
    QString m_writtenAddress;
    QString m_prefix;
    QPointer<ORNClientInterface> m_client;
    QMap<QString, QPointer<ORNClientItem>> m_items;
    QMap<QByteArray, Sink> m_sinks;
    LateItems m_lateItems;
    AppendedCount m_appended;
};
