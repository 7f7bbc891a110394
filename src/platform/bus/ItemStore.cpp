#include "platform/bus/ItemStore.h"

#include "platform/bus/BusLimits.h"
#include "platform/bus/BusMessage.h"
#include "platform/bus/ItemValue.h"

#include <algorithm>
#include <utility>

namespace {

using Lock = std::lock_guard<std::mutex>;

qint64 sizeOfVector(qint64 elements)
{
    return elements * qint64(sizeof(double));
}

quint64 sizeOf(const QVector<double> &vector)
{
    return quint64(vector.size());
}

// The array without its `dropped` oldest elements and with others at its end, in memory of its own.
QVector<double> joined(const QVector<double> &vector, int dropped, const QVector<double> &elements)
{
    QVector<double> all(int(vector.size()) - dropped + int(elements.size()));
    std::copy(elements.cbegin(), elements.cend(),
              std::copy(vector.cbegin() + dropped, vector.cend(), all.begin()));
    return all;
}

} // namespace

ItemStore::Outcome ItemStore::setValue(const QString &itemName, const QVariant &value)
{
    const Lock lock(m_mutex);
    Entry *entry = nullptr;
    const Outcome outcome = entryFor(itemName, false, graph::sizeOfValue(value), &entry);
    if (outcome != Taken || (entry->isKnown && graph::sameValue(entry->item.value, value)))
        return outcome;
    entry->item.value = value;
    noteChange(itemName, entry);
    return Taken;
}

ItemStore::Outcome ItemStore::setVector(const QString &itemName, const QVector<double> &vector)
{
    if (vector.size() > graph::maxElements)
        return NoRoom;
    // Compared, and the former one destroyed, while nobody has to wait for it.
    const std::optional<Item> present = item(itemName);
    if (present && present->isVector && graph::sameContents(present->vector, vector))
        return Taken;
    const Lock lock(m_mutex);
    Entry *entry = nullptr;
    const Outcome outcome = entryFor(itemName, true, sizeOfVector(vector.size()), &entry);
    if (outcome != Taken)
        return outcome;
    entry->item.vector = vector;
    entry->isShared = true;
    entry->appended = -1;
    entry->dropped = 0;
    noteChange(itemName, entry);
    return Taken;
}

ItemStore::Outcome ItemStore::makeVector(const QString &itemName)
{
    const std::optional<Item> present = item(itemName);
    if (present)
        return present->isVector ? Taken : WrongKind;
    return setVector(itemName, {});
}

ItemStore::Outcome ItemStore::append(const QString &itemName, quint64 dropped, quint64 offset,
                                     const QVector<double> &elements)
{
    const Lock lock(m_mutex);
    const auto known = m_entries.constFind(itemName);
    const bool isThere = known != m_entries.constEnd();
    if (isThere && known->isKnown && !known->item.isVector)
        return WrongKind;
    const quint64 size = isThere ? sizeOf(known->item.vector) : 0;
    if (dropped > size || size - dropped != offset)
        return Misfit;
    const qint64 newSize = qint64(offset) + elements.size();
    if (newSize > graph::maxElements)
        return NoRoom;
    Entry *entry = nullptr;
    const Outcome outcome = entryFor(itemName, true, sizeOfVector(newSize), &entry);
    if (outcome != Taken || (entry->isKnown && dropped == 0 && elements.isEmpty()))
        return outcome;
    entry->append(int(dropped), elements);
    noteChange(itemName, entry);
    return Taken;
}

void ItemStore::Entry::append(int droppedNow, const QVector<double> &elements)
{
    if (!isChanged) {
        appended = 0;
        dropped = 0;
    }
    // That another thread has let go of a shared array does not tell that it has finished reading it: Qt asks for the
    // former only.
    if (std::exchange(isShared, false)) {
        item.vector = joined(item.vector, droppedNow, elements);
    } else {
        item.vector.remove(0, droppedNow);
        item.vector += elements;
    }
    if (appended >= 0) {
        appended += elements.size();
        dropped += droppedNow;
    }
}

void ItemStore::forgetUnwatched()
{
    const Lock lock(m_mutex);
    for (auto it = m_entries.begin(); it != m_entries.end();) {
        if (it->isWatched) {
            ++it;
        } else {
            m_bytes -= it->bytes;
            it = m_entries.erase(it);
        }
    }
}

bool ItemStore::isWanted(const QString &itemName) const
{
    const Lock lock(m_mutex);
    if (m_wanted.contains(itemName))
        return true;
    const auto known = m_entries.constFind(itemName);
    return known != m_entries.constEnd() && known->isWatched;
}

std::optional<ItemStore::Item> ItemStore::watch(const QString &itemName)
{
    const Lock lock(m_mutex);
    const auto it = m_entries.find(itemName);
    if (it == m_entries.end() || !it->isKnown) {
        m_wanted.insert(itemName);
        return {};
    }
    it->isWatched = true;
    it->isShared = true;
    return it->item;
}

void ItemStore::watch(const QString &itemName, bool isVector)
{
    const Lock lock(m_mutex);
    Entry &entry = m_entries[itemName];
    entry.isWatched = true;
    entry.item.isVector = isVector;
}

bool ItemStore::hasChanges() const
{
    const Lock lock(m_mutex);
    return !m_changedVectors.isEmpty() || !m_changedValues.isEmpty();
}

ItemStore::Changes ItemStore::takeChanges()
{
    const Lock lock(m_mutex);
    return taken();
}

ItemStore::Changes ItemStore::takeChanges(BusItems *all)
{
    const Lock lock(m_mutex);
    for (auto it = m_entries.begin(); it != m_entries.end(); ++it) {
        it->isShared = true;
        if (it->item.isVector)
            all->vectors.insert(it.key(), it->item.vector);
        else
            all->values.insert(it.key(), it->item.value);
    }
    return taken();
}

void ItemStore::watchAll()
{
    const Lock lock(m_mutex);
    m_watchesAll = true;
}

std::optional<ItemStore::Item> ItemStore::item(const QString &itemName) const
{
    const Lock lock(m_mutex);
    const auto it = m_entries.constFind(itemName);
    return it == m_entries.constEnd() || !it->isKnown ? std::optional<Item>() : it->item;
}

bool ItemStore::hasRoomForName(const QString &itemName) const
{
    return itemName.size() <= graph::maxNameLength &&
           (m_entries.size() < graph::maxItems || m_wanted.contains(itemName) ||
            m_entries.contains(itemName));
}

// Finds or makes the entry and sees to it that there is room for what it is to hold.
ItemStore::Outcome ItemStore::entryFor(const QString &itemName, bool isVector, qint64 bytes, Entry **entry)
{
    auto it = m_entries.find(itemName);
    if (it != m_entries.end() && it->item.isVector != isVector)
        return WrongKind;
    const bool isNew = it == m_entries.end();
    const qint64 before = isNew ? 0 : it->bytes;
    const qint64 after = bytes + graph::sizeOfText(itemName);
    if (!hasRoomForName(itemName) || m_bytes - before + after > graph::maxItemBytes)
        return NoRoom;
    if (isNew) {
        it = m_entries.insert(itemName, Entry());
        it->item.isVector = isVector;
        it->isWatched = m_watchesAll || m_wanted.remove(itemName);
    }
    m_bytes += after - before;
    it->bytes = after;
    *entry = &*it;
    return Taken;
}

void ItemStore::noteChange(const QString &itemName, Entry *entry)
{
    entry->isKnown = true;
    if (!entry->isWatched || std::exchange(entry->isChanged, true))
        return;
    (entry->item.isVector ? m_changedVectors : m_changedValues).append(itemName);
}

ItemStore::Changes ItemStore::taken()
{
    Changes changes;
    for (QStringList *names : {&m_changedVectors, &m_changedValues}) {
        for (const QString &itemName : qAsConst(*names)) {
            Entry &entry = m_entries[itemName];
            entry.isChanged = false;
            entry.isShared = true;
            changes.append({itemName, entry.item, entry.appended, entry.dropped});
        }
        names->clear();
    }
    return changes;
}
