#pragma once

#include "data/MinMaxPyramid.h"

#include <QtGlobal>

#include <cstdint>
#include <cstdlib>
#include <new>

#ifdef Q_OS_LINUX
#include <sys/mman.h>
#include <unistd.h>
#endif

namespace graph {

// Memory for samples that are written once each, from the first to the last, with the pyramid over them.
// Pages that are not written yet, and those that were let go, take no memory.
template <typename Sample> class StreamArray
{
public:
    explicit StreamArray(int capacity)
        : m_samples(static_cast<Sample *>(std::malloc(std::size_t(capacity) * sizeof(Sample))))
        , m_capacity(capacity)
    {
        if (!m_samples)
            throw std::bad_alloc();
    }
    ~StreamArray() { std::free(m_samples); }
    Q_DISABLE_COPY(StreamArray)

    Sample *samples() { return m_samples; }
    const Sample *samples() const { return m_samples; }
    int capacity() const { return m_capacity; }
    bool isSmall() const { return qint64(m_capacity) * qint64(sizeof(Sample)) <= largestSmall; }

    // Nobody will read the samples before this one any more, but for the pyramid's search for NaN.
    void letGo(int first)
    {
#ifdef Q_OS_LINUX
        static const std::uintptr_t page = std::uintptr_t(sysconf(_SC_PAGESIZE));
        if (isSmall() || first < m_letGo + fewestToLetGo)
            return;
        const auto floor = [](std::uintptr_t address) { return address / page * page; };
        const std::uintptr_t begin = floor(std::uintptr_t(m_samples + m_letGo) + page - 1);
        const std::uintptr_t end = floor(std::uintptr_t(m_samples + first));
        auto *memory = reinterpret_cast<char *>(m_samples);
        if (begin < end)
            madvise(memory + (begin - std::uintptr_t(memory)), end - begin, MADV_DONTNEED);
        m_letGo = first;
#else
        Q_UNUSED(first)
#endif
    }

    MinMaxPyramid pyramid;

private:
    // Each time costs a call of the system.
    static constexpr int fewestToLetGo = 1 << 15;
    // Bytes. A large array lets go of the pages that it does not need.
    static constexpr qint64 largestSmall = 1 << 24;

    Sample *m_samples;
    int m_capacity;
    int m_letGo = 0;
};

} // namespace graph
