#pragma once

#include <algorithm>
#include <cmath>
#include <limits>

namespace graph {

// Converts without undefined behaviour: NaN gives 0, values outside lowest..highest give the nearer limit,
// others are truncated toward zero.
inline int truncated(double value, int lowest, int highest)
{
    if (!(value > lowest))
        return std::isnan(value) ? 0 : lowest;
    return value < highest ? static_cast<int>(value) : highest;
}

// The same, for sample indices and counts: the limits are those of int.
inline int truncatedIndex(double value)
{
    return truncated(value, std::numeric_limits<int>::min(), std::numeric_limits<int>::max());
}

// As truncatedIndex, but rounded half away from zero.
inline int roundedIndex(double value)
{
    return truncatedIndex(std::round(value));
}

// Far outside every item, and small enough that pen widths and offsets can be added without overflow.
constexpr int pixelLimit = 1 << 24;

// The pixel column or row of an item coordinate: truncated toward zero, clamped to +-pixelLimit; NaN gives 0.
inline int pixel(double coordinate)
{
    return truncated(coordinate, -pixelLimit, pixelLimit);
}

// An item coordinate that is not rounded, within the same limits: painter paths take neither infinities nor NaN.
inline double coordinate(double value)
{
    if (!(value > -pixelLimit))
        return std::isnan(value) ? 0.0 : -pixelLimit;
    return value < pixelLimit ? value : pixelLimit;
}

// As pixel, but rounded half away from zero. The difference is exact, and quicker than std::round, which is a call.
inline int roundedPixel(double coordinate)
{
    const int whole = pixel(coordinate);
    const double rest = coordinate - whole;
    const int rounded = whole + (rest >= 0.5) - (rest <= -0.5);
    return std::min(std::max(rounded, -pixelLimit), pixelLimit);
}

// A width that QPen takes without a warning: negative ones give 0, too large ones its greatest.
inline int penWidth(int width)
{
    constexpr int largest = (1 << 15) - 1;
    return width < 0 ? 0 : width < largest ? width : largest;
}

} // namespace graph
