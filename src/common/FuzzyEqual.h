#pragma once

#include <algorithm>
#include <cmath>

namespace graph {

// True when a and b differ by less than one part in 10^12; 0 equals only 0, NaN equals nothing.
inline bool fuzzyEqual(double a, double b)
{
    return std::abs(a - b) * 1e12 <= std::min(std::abs(a), std::abs(b));
}

// The same test made on a + 1 and b + 1, so that it can be used for values around zero.
inline bool fuzzyEqualNearZero(double a, double b)
{
    return fuzzyEqual(a + 1.0, b + 1.0);
}

} // namespace graph
