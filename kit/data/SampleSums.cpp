#include "kit/data/SampleSums.h"

#include <algorithm>
#include <cmath>

namespace graph {

namespace {

Sums plainSums(const SampleSpan &samples, int first, int end)
{
    Sums sums;
    for (int i = first; i < end; ++i) {
        const double value = samples.y(i);
        if (!std::isfinite(value))
            continue;
        sums.extremes.add({value, value});
        if (value > 0.0)
            sums.leastPositive = std::min(sums.leastPositive, value);
        sums.sum += value;
        sums.squares += value * value;
        ++sums.count;
    }
    return sums;
}

} // namespace

void SampleSums::follow(const SampleSpan &samples, const SampleHistory &history)
{
    // Only where the first sample of the view is the first of the data do numbers run through both alike.
    const bool isInOrder = samples.isInDataOrder() && !samples.isBackwards();
    const bool goesOn = isInOrder && m_isInOrder && history.epoch != 0 && history.epoch == m_history.epoch;
    if (!isInOrder && history.isSame(m_history) && !m_isInOrder)
        return;
    const qint64 number = isInOrder ? history.first : 0;
    const qint64 firstBlock = (number + blockSize - 1) / blockSize;
    m_history = history;
    m_isInOrder = isInOrder;
    const qint64 fallen = firstBlock - m_firstBlock;
    if (!goesOn || fallen > m_blocks.size())
        m_blocks.clear();
    else
        m_blocks.remove(0, int(fallen));
    m_firstBlock = firstBlock;
    const qint64 endBlock = (number + samples.size()) / blockSize;
    for (qint64 block = firstBlock + m_blocks.size(); block < endBlock; ++block) {
        const int first = int(block * blockSize - number);
        m_blocks.append(plainSums(samples, first, first + blockSize));
    }
}

Sums SampleSums::of(const SampleSpan &samples, int first, int end) const
{
    const qint64 number = m_isInOrder ? m_history.first : 0;
    const qint64 firstBlock = std::max((number + first + blockSize - 1) / blockSize, m_firstBlock);
    const qint64 endBlock = std::min((number + end) / blockSize, m_firstBlock + m_blocks.size());
    if (firstBlock >= endBlock)
        return plainSums(samples, first, end);
    Sums sums = plainSums(samples, first, int(firstBlock * blockSize - number));
    for (qint64 block = firstBlock; block < endBlock; ++block)
        sums.add(m_blocks.at(int(block - m_firstBlock)));
    sums.add(plainSums(samples, int(endBlock * blockSize - number), end));
    return sums;
}

} // namespace graph
