#pragma once

#include "data/PlotData.h"

#include <algorithm>

namespace graph {

// The index of the sample nearest to an x value, the end samples for values outside the data. The data must
// not be empty.
inline int nearestSample(const PlotData &data, double x)
{
    return std::max(std::min(data.indexOf(x), data.size() - 1), 0);
}

} // namespace graph
