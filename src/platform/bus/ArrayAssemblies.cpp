#include "platform/bus/ArrayAssemblies.h"

#include "platform/bus/BusLimits.h"

#include <algorithm>

namespace {

qint64 sizeOf(const QVector<double> &elements)
{
    return elements.size() * qint64(sizeof(double));
}

} // namespace

ArrayAssemblies::ArrayAssemblies(qint64 *totalBytes)
    : m_totalBytes(totalBytes)
{
}

ArrayAssemblies::~ArrayAssemblies()
{
    clear();
}

ArrayAssemblies::Outcome ArrayAssemblies::add(graph::ItemNews *news)
{
    if (news->offset == 0) {
        remove(news->itemName);
        if (quint64(news->elements.size()) == news->size)
            return Complete;
    }
    if (!isNextPart(*news)) {
        remove(news->itemName);
        return Malformed;
    }
    if (!makeRoom(news->itemName, sizeOf(news->elements))) {
        remove(news->itemName);
        return NoRoom;
    }
    Assembly &assembly = m_assemblies[news->itemName];
    assembly.serial = news->serial;
    assembly.touched = std::chrono::steady_clock::now();
    assembly.elements += news->elements;
    *m_totalBytes += sizeOf(news->elements);
    if (quint64(assembly.elements.size()) < news->size)
        return Unfinished;
    news->elements = assembly.elements;
    remove(news->itemName);
    return Complete;
}

bool ArrayAssemblies::isNextPart(const graph::ItemNews &news) const
{
    const auto known = m_assemblies.constFind(news.itemName);
    const bool isKnown = known != m_assemblies.constEnd();
    const quint64 present = isKnown ? quint64(known->elements.size()) : 0;
    const quint64 count = quint64(news.elements.size());
    // Without an overflow: each is at most the size, which is bounded first.
    return news.size <= quint64(graph::maxElements) && news.offset == present && count > 0 &&
           count <= news.size - std::min(news.size, present) && (!isKnown || known->serial == news.serial);
}

void ArrayAssemblies::removeStale(TimePoint now)
{
    const auto limit = now - std::chrono::milliseconds(graph::maxUnfinishedWait);
    for (auto it = m_assemblies.begin(); it != m_assemblies.end();) {
        if (it->touched > limit) {
            ++it;
        } else {
            *m_totalBytes -= sizeOf(it->elements);
            it = m_assemblies.erase(it);
        }
    }
}

void ArrayAssemblies::clear()
{
    for (const Assembly &assembly : qAsConst(m_assemblies))
        *m_totalBytes -= sizeOf(assembly.elements);
    m_assemblies.clear();
}

bool ArrayAssemblies::makeRoom(const QString &itemName, qint64 bytes)
{
    const auto isFull = [&] {
        const int names = m_assemblies.size() + (m_assemblies.contains(itemName) ? 0 : 1);
        return names > graph::maxUnfinishedArrays || *m_totalBytes + bytes > graph::maxUnfinishedBytes;
    };
    while (isFull()) {
        auto oldest = m_assemblies.cend();
        for (auto it = m_assemblies.cbegin(); it != m_assemblies.cend(); ++it) {
            if (it.key() != itemName && (oldest == m_assemblies.cend() || it->touched < oldest->touched))
                oldest = it;
        }
        if (oldest == m_assemblies.cend())
            return false;
        remove(QString(oldest.key()));
    }
    return true;
}

void ArrayAssemblies::remove(const QString &itemName)
{
    const auto it = m_assemblies.find(itemName);
    if (it == m_assemblies.end())
        return;
    *m_totalBytes -= sizeOf(it->elements);
    m_assemblies.erase(it);
}
