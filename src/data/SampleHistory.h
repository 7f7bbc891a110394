#pragma once

#include <QtGlobal>

namespace graph {

// Tells whether samples have changed since they were looked at. Those of one epoch keep their numbers, which count from
// its beginning: when the oldest fall out and new ones come at the end, `first` is the number of sample 0. Epoch 0 is
// that of data that do not know; any other number is never used again by the same data.
struct SampleHistory
{
    qint64 epoch = 0;
    qint64 first = 0;
    int size = 0;

    bool isSame(const SampleHistory &other) const
    {
        return epoch != 0 && epoch == other.epoch && first == other.first && size == other.size;
    }
    // How many samples have fallen out since the other one, of the same data.
    qint64 scrolledSince(const SampleHistory &other) const
    {
        return epoch != 0 && epoch == other.epoch ? first - other.first : 0;
    }
};

} // namespace graph
