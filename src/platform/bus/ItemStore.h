#pragma once

#include "platform/bus/BusItems.h"

#include <QSet>
#include <QString>
#include <QStringList>

#include <mutex>
#include <optional>

// The present items of one service, between the thread that changes them and the one that is told. Of each
// item only the newest value waits; what is appended to an array joins what is there. An item is told about
// once it is watched; the others are just kept. All functions may be called from any thread.
class ItemStore
{
public:
    enum Outcome {
        Taken,
        WrongKind, // a value for an array, or the reverse
        NoRoom,    // beyond what a service may keep here
        Misfit     // to be appended elsewhere than at the end
    };

    struct Item
    {
        bool isVector = false;
        QVariant value;
        QVector<double> vector;
    };
    // `appended` is the number of the newest elements that were appended since the last change was taken, also
    // where more of them were dropped again; less than 0 when the array was replaced.
    struct Change
    {
        QString itemName;
        Item item;
        qint64 appended = -1;
        qint64 dropped = 0;
    };
    // Arrays come first, so that a value which says that arrays have changed is told after them.
    using Changes = QVector<Change>;

    // For the thread that changes the items. One that equals the present one is no change.
    Outcome setValue(const QString &itemName, const QVariant &value);
    Outcome setVector(const QString &itemName, const QVector<double> &vector);
    // An empty array unless there is an array of that name.
    Outcome makeVector(const QString &itemName);
    // Drops the `dropped` oldest elements; then the array has to have `offset` of them.
    Outcome append(const QString &itemName, quint64 dropped, quint64 offset, const QVector<double> &elements);
    // Everything that nobody watches.
    void forgetUnwatched();
    // An item of that name would be told of.
    bool isWanted(const QString &itemName) const;

    // For the thread that is told.

    // From now on the item is watched; nothing when there is none of that name yet, which then is told when it
    // comes.
    std::optional<Item> watch(const QString &itemName);
    // For an item that came another way and has the given kind.
    void watch(const QString &itemName, bool isVector);
    bool hasChanges() const;
    Changes takeChanges();
    // The changes, and all items as these leave them.
    Changes takeChanges(BusItems *all);
    // Tells of every item from now on.
    void watchAll();

private:
    struct Entry
    {
        Item item;
        bool isKnown = false; // false for a watched name without a value
        bool isWatched = false;
        bool isChanged = false;
        bool isShared = false; // the vector was handed over, to here or from here
        qint64 appended = -1;
        qint64 dropped = 0;
        qint64 bytes = 0;

        void append(int droppedNow, const QVector<double> &elements);
    };

    std::optional<Item> item(const QString &itemName) const;
    bool hasRoomForName(const QString &itemName) const;
    Outcome entryFor(const QString &itemName, bool isVector, qint64 bytes, Entry **entry);
    void noteChange(const QString &itemName, Entry *entry);
    Changes taken();

    mutable std::mutex m_mutex;
    QHash<QString, Entry> m_entries;
    QSet<QString> m_wanted; // watched names that nothing is known of
    QStringList m_changedVectors;
    QStringList m_changedValues;
    qint64 m_bytes = 0;
    bool m_watchesAll = false;
};
