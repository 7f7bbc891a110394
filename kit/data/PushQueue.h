#pragma once

#include "common/Export.h"

#include <QtGlobal>

#include <algorithm>
#include <atomic>
#include <cstring>
#include <memory>
#include <mutex>

namespace graph {

// Lets one thread pass. When that thread has ended, another one may.
class GRAPH_CHARTS_EXPORT OneThread
{
public:
    bool admit();

private:
    using Token = std::shared_ptr<char>;

    std::atomic<const char *> m_admitted{nullptr};
    std::mutex m_mutex;
    std::weak_ptr<char> m_token;
};

// Samples on their way from one thread to another, without a lock and without a wait. Where the taker is late
// the newest samples overwrite the oldest, which the taker finds out and counts.
//
// Every element is atomic, and the writer claims places before it writes to them: a reader that has found out
// afterwards that its samples were not claimed has them whole.
template <typename Sample> class PushQueue
{
public:
    static constexpr qint64 capacity = qint64(1) << 20;

    // at(i) is sample i. For one thread at a time.
    template <typename At> void push(qint64 count, At at)
    {
        if (!m_places)
            m_places.reset(new Place[capacity]);
        const qint64 begin = m_written.load(std::memory_order_relaxed);
        const qint64 end = begin + count;
        m_claimed.store(end, std::memory_order_relaxed);
        for (qint64 number = std::max(begin, end - capacity); number < end; ++number)
            m_places[number & (capacity - 1)].store(at(number - begin));
        m_written.store(end, std::memory_order_release);
    }

    // Gives what has come to samples(const Sample *, int count) and lost(qint64 count), in order; false where
    // nothing has. For one thread.
    template <typename Samples, typename Lost> bool take(Samples samples, Lost lost)
    {
        const qint64 end = m_written.load(std::memory_order_acquire);
        const bool any = m_taken < end;
        while (m_taken < end) {
            Sample portion[portionSize];
            const qint64 begin = std::max(m_taken, end - capacity);
            const int count = int(std::min<qint64>(portionSize, end - begin));
            for (int i = 0; i < count; ++i)
                portion[i] = m_places[(begin + i) & (capacity - 1)].load();
            const qint64 oldest = m_claimed.load(std::memory_order_acquire) - capacity;
            const qint64 whole = std::min(std::max(begin, oldest), end);
            if (whole > m_taken)
                lost(whole - m_taken);
            m_taken = std::max(whole, begin + count);
            if (whole < begin + count)
                samples(portion + (whole - begin), int(begin + count - whole));
        }
        return any;
    }

private:
    static constexpr int portionSize = 1024;
    static constexpr int words = sizeof(Sample) / sizeof(quint64);

    // Orders its accesses after the claim, for which plain atomic ones would need a fence.
    class Place
    {
    public:
        void store(const Sample &sample)
        {
            quint64 bits[words];
            std::memcpy(bits, &sample, sizeof bits);
            for (int i = 0; i < words; ++i)
                m_words[i].store(bits[i], std::memory_order_release);
        }
        Sample load() const
        {
            quint64 bits[words];
            for (int i = 0; i < words; ++i)
                bits[i] = m_words[i].load(std::memory_order_acquire);
            Sample sample;
            std::memcpy(static_cast<void *>(&sample), bits, sizeof bits);
            return sample;
        }

    private:
        std::atomic<quint64> m_words[words];
    };

    std::unique_ptr<Place[]> m_places; // made by the thread that pushes, when it does so for the first time
    std::atomic<qint64> m_claimed{0};
    std::atomic<qint64> m_written{0};
    qint64 m_taken = 0;
};

} // namespace graph
