#pragma once

#include "data/MinMax.h"

#include <cstdint>
#include <vector>

namespace graph {

// Answers the extremes of any index range of one array by looking at some 200 values at most, for any
// length of the range: blocks of 64 samples, and above them levels of eight nodes in one. 0.3 bytes a sample.
//
// The array is not kept. Each query is given the same, unchanged samples again: double, QPointF, or any type
// with a function minMax(const Sample *, int), and hasNaN(const Sample *, int) where that is asked for. Samples
// that were appended to the array are added by extend(), which reads no others.
class MinMaxPyramid
{
public:
    static constexpr int blockSize = 64;
    static constexpr int fanOut = 8;

    MinMaxPyramid() = default;
    template <typename Sample> MinMaxPyramid(const Sample *samples, int count) { extend(samples, count); }
    // Makes room for an array of that many samples.
    void reserve(int count);
    // Of no array, for another one.
    void clear();
    // The array begins at that block now; all of its samples that the pyramid knows have moved along.
    void removeFront(int blockCount);

    // The array has `count` samples now.
    template <typename Sample> void extend(const Sample *samples, int count);

    // The same as minMax(samples + first, end - first), for 0 <= first <= end <= count.
    template <typename Sample> MinMax minMax(const Sample *samples, int first, int end) const;

    // Whether any of the samples is NaN, which the extremes do not tell. They are read when this is asked for, each
    // once: most plots never do.
    template <typename Sample> bool hasNaN(const Sample *samples, int count) const;

private:
    using Level = std::vector<MinMax>;

    template <typename Sample> static void fetchBlockBehind(const Sample *samples, int first, int end);
    MinMax nodes(std::size_t first, std::size_t end) const;
    void extendLevels();

    std::vector<Level> m_levels{1}; // the finest first
    mutable int m_searched = 0;     // samples, for NaN
    mutable bool m_hasNaN = false;
};

inline void MinMaxPyramid::reserve(int count)
{
    // The coarser levels have an eighth of the nodes, all together a seventh.
    m_levels.front().reserve(std::size_t(std::max(count, 0)) / blockSize);
}

inline void MinMaxPyramid::clear()
{
    for (Level &level : m_levels)
        level.clear();
    m_searched = 0;
    m_hasNaN = false;
}

inline void MinMaxPyramid::removeFront(int blockCount)
{
    Level &blocks = m_levels.front();
    blocks.erase(blocks.begin(), blocks.begin() + std::min(std::size_t(blockCount), blocks.size()));
    // Their nodes have other blocks under them now.
    for (std::size_t level = 1; level < m_levels.size(); ++level)
        m_levels[level].clear();
    m_searched = 0;
    m_hasNaN = false;
    extendLevels();
}

template <typename Sample> void MinMaxPyramid::extend(const Sample *samples, int count)
{
    using graph::minMax;
    // Whole blocks only; the rest is read from the array.
    Level &blocks = m_levels.front();
    const std::size_t end = std::size_t(std::max(count, 0)) / blockSize;
    if (blocks.empty())
        blocks.reserve(end);
    for (std::size_t block = blocks.size(); block < end; ++block)
        blocks.push_back(minMax(samples + block * blockSize, blockSize));
    extendLevels();
}

// Nodes of the coarser levels, as far as there is a whole number of finer ones under them.
inline void MinMaxPyramid::extendLevels()
{
    for (std::size_t level = 0; m_levels[level].size() >= fanOut; ++level) {
        if (level + 1 == m_levels.size())
            m_levels.emplace_back();
        const Level &finer = m_levels[level];
        Level &coarser = m_levels[level + 1];
        for (std::size_t node = coarser.size(); node < finer.size() / fanOut; ++node) {
            MinMax extremes;
            for (std::size_t child = node * fanOut; child < (node + 1) * fanOut; ++child)
                extremes.add(finer[child]);
            coarser.push_back(extremes);
        }
    }
}

// Who asks for one pixel column after the other needs the block at the end of the next one then. It lies too far away for
// the processor to guess, and to wait for it takes longer than all the rest.
template <typename Sample> void MinMaxPyramid::fetchBlockBehind(const Sample *samples, int first, int end)
{
    constexpr int farAway = 4 * blockSize;
    constexpr std::size_t line = 64; // bytes
    if (end - first < farAway)
        return;
    const std::size_t block = (std::size_t(end) + std::size_t(end - first)) / blockSize;
    // It need not be there: this may be the last column.
    const auto address = reinterpret_cast<std::uintptr_t>(samples) + block * blockSize * sizeof(Sample);
    for (std::size_t byte = 0; byte < blockSize * sizeof(Sample); byte += line)
        __builtin_prefetch(reinterpret_cast<const void *>(address + byte));
}

template <typename Sample> MinMax MinMaxPyramid::minMax(const Sample *samples, int first, int end) const
{
    using graph::minMax;
    const int firstBlock = first / blockSize + (first % blockSize != 0);
    const int endBlock = end / blockSize;
    if (firstBlock >= endBlock)
        return minMax(samples + first, end - first);
    fetchBlockBehind(samples, first, end);
    MinMax result = nodes(std::size_t(firstBlock), std::size_t(endBlock));
    result.add(minMax(samples + first, firstBlock * blockSize - first));
    result.add(minMax(samples + endBlock * blockSize, end - endBlock * blockSize));
    return result;
}

// The extremes of the blocks first..end-1: the ends that fill no node of the next level, then that level.
inline MinMax MinMaxPyramid::nodes(std::size_t first, std::size_t end) const
{
    MinMax result;
    for (const Level &level : m_levels) {
        const bool isTop = &level == &m_levels.back();
        while (first < end && (isTop || first % fanOut != 0))
            result.add(level[first++]);
        while (first < end && end % fanOut != 0)
            result.add(level[--end]);
        first /= fanOut;
        end /= fanOut;
    }
    return result;
}

template <typename Sample> bool MinMaxPyramid::hasNaN(const Sample *samples, int count) const
{
    using graph::hasNaN;
    if (!m_hasNaN && m_searched < count) {
        m_hasNaN = hasNaN(samples + m_searched, count - m_searched);
        m_searched = count;
    }
    return m_hasNaN;
}

} // namespace graph
