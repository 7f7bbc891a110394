#pragma once

#include <QPointF>
#include <QRectF>

#include <algorithm>
#include <limits>

namespace graph {

// The least and the greatest of some values; empty until the first value that is not NaN.
struct MinMax
{
    double min = std::numeric_limits<double>::infinity();
    double max = -std::numeric_limits<double>::infinity();

    bool isEmpty() const { return !(min <= max); }
    void add(const MinMax &other)
    {
        min = std::min(min, other.min);
        max = std::max(max, other.max);
    }
};

// The extremes of `count` values, or of the y of `count` points. NaN is ignored, infinities count; only NaN
// or a count of 0 and below gives the empty MinMax.
MinMax minMax(const double *values, int count);
MinMax minMax(const QPointF *points, int count);

bool hasNaN(const double *values, int count);
bool hasNaN(const QPointF *points, int count);

// The rectangle from the lower to the upper end of both; null when either is empty.
inline QRectF boundingRect(const MinMax &x, const MinMax &y)
{
    return x.isEmpty() || y.isEmpty() ? QRectF() : QRectF(x.min, y.min, x.max - x.min, y.max - y.min);
}

} // namespace graph
