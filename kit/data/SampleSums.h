#pragma once

#include "common/Export.h"
#include "data/PlotData.h"

#include <QVector>

#include <limits>

namespace graph {

// What a stretch of samples adds up to. Values that are not finite are left out.
struct Sums
{
    MinMax extremes;
    double leastPositive = std::numeric_limits<double>::infinity();
    double sum = 0.0;
    double squares = 0.0;
    qint64 count = 0;

    void add(const Sums &other)
    {
        extremes.add(other.extremes);
        leastPositive = std::min(leastPositive, other.leastPositive);
        sum += other.sum;
        squares += other.squares;
        count += other.count;
    }
};

// Answers the sums of any stretch from those of blocks. Of samples that scroll, only the new ones are read.
class GRAPH_CHARTS_EXPORT SampleSums
{
public:
    // To be called before a question when the samples may have changed; history is that of the data they are
    // of.
    void follow(const SampleSpan &samples, const SampleHistory &history);
    // Of the samples first..end-1, all of which exist, of the span that was followed last.
    Sums of(const SampleSpan &samples, int first, int end) const;

private:
    static constexpr int blockSize = 1024;

    SampleHistory m_history;
    bool m_isInOrder = false;
    // Blocks count from the beginning of the epoch, so that they stay where they are while samples fall out.
    qint64 m_firstBlock = 0;
    QVector<Sums> m_blocks;
};

} // namespace graph
