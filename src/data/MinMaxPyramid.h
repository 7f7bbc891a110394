#pragma once

#include "data/MinMax.h"

#include <optional>
#include <vector>

namespace graph {

// Answers the extremes of any index range of one array by looking at some 200 values at most, whatever the
// length of the range: blocks of 64 samples, and above them levels of eight nodes in one. 0.3 bytes a sample.
//
// The array is not kept. Each query is given the same, unchanged samples again: double, QPointF, or any type
// with a function minMax(const Sample *, int), and hasNaN(const Sample *, int) where that is asked for.
class MinMaxPyramid
{
public:
    static constexpr int blockSize = 64;
    static constexpr int fanOut = 8;

    template <typename Sample> MinMaxPyramid(const Sample *samples, int count);

    // The same as minMax(samples + first, end - first), for 0 <= first <= end <= count.
    template <typename Sample> MinMax minMax(const Sample *samples, int first, int end) const;

    // Whether any of the samples is NaN, which the extremes do not tell. They are read when this is asked for the
    // first time: most plots never do.
    template <typename Sample> bool hasNaN(const Sample *samples, int count) const;

private:
    using Level = std::vector<MinMax>;

    MinMax nodes(std::size_t first, std::size_t end) const;

    std::vector<Level> m_levels; // the finest first
    mutable std::optional<bool> m_hasNaN;
};

template <typename Sample> MinMaxPyramid::MinMaxPyramid(const Sample *samples, int count)
{
    using graph::minMax;
    // Whole blocks only; the rest is read from the array.
    Level blocks(std::size_t(std::max(count, 0)) / blockSize);
    for (std::size_t block = 0; block < blocks.size(); ++block)
        blocks[block] = minMax(samples + block * blockSize, blockSize);
    while (blocks.size() >= fanOut) {
        Level coarser(blocks.size() / fanOut);
        for (std::size_t node = 0; node < coarser.size(); ++node) {
            for (std::size_t child = node * fanOut; child < (node + 1) * fanOut; ++child)
                coarser[node].add(blocks[child]);
        }
        m_levels.push_back(std::move(blocks));
        blocks = std::move(coarser);
    }
    m_levels.push_back(std::move(blocks));
}

template <typename Sample> MinMax MinMaxPyramid::minMax(const Sample *samples, int first, int end) const
{
    using graph::minMax;
    const int firstBlock = first / blockSize + (first % blockSize != 0);
    const int endBlock = end / blockSize;
    if (firstBlock >= endBlock)
        return minMax(samples + first, end - first);
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
    if (!m_hasNaN)
        m_hasNaN = hasNaN(samples, count);
    return *m_hasNaN;
}

} // namespace graph
