#pragma once

#include "data/PlotData.h"

#include <algorithm>

namespace graph {

inline bool hasSample(const PlotData &data, int index)
{
    return index >= 0 && index < data.size();
}

// The index of the sample nearest to an x value, the end samples for values outside the data; -1 for data without
// samples.
inline int nearestSample(const PlotData &data, double x)
{
    const int last = data.size() - 1;
    return last < 0 ? -1 : std::max(std::min(data.indexOf(x), last), 0);
}

} // namespace graph
