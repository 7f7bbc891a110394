#pragma once

#include <algorithm>
#include <cmath>
#include <limits>

namespace graph {

// The extent of a rectangle whose far edge, the sum of its begin and this, does not fall short of `end` by a
// rounding error: a figure at the visible maximum is visible.
inline double extentUpTo(double begin, double extent, double end)
{
    const double missing = end - (begin + extent);
    const double rounding = std::numeric_limits<double>::epsilon() * std::max(std::abs(begin), std::abs(end));
    const bool fallsShort = missing > 0.0 && missing <= rounding;
    return fallsShort ? std::nextafter(extent, std::numeric_limits<double>::infinity()) : extent;
}

} // namespace graph
