#include "data/SampleSpan.h"

#include "common/SafeInteger.h"
#include "data/LeadingCount.h"
#include "data/PyramidOnDemand.h"

#include <cmath>

namespace graph {

SampleSpan::SampleSpan(const QVector<double> &values, double xFirst, double xInterval)
    : m_valueArray(values)
    , m_values(m_valueArray.constData())
    , m_xFirst(xFirst)
    , m_xInterval(xInterval)
    , m_arraySize(values.size())
{
    takeValues(0, m_arraySize);
}

SampleSpan::SampleSpan(const QVector<QPointF> &points, const QVector<int> &indices)
    : m_pointArray(points)
    , m_indices(indices)
    , m_points(m_pointArray.constData())
    , m_arraySize(points.size())
    , m_size(points.size())
{
}

SampleSpan::SampleSpan(const Stretch<double> &stretch, double xFirst, double xInterval)
    : m_owner(stretch.owner)
    , m_values(stretch.array)
    , m_xFirst(xFirst)
    , m_xInterval(xInterval)
    , m_number(stretch.number - stretch.first)
    , m_arraySize(stretch.first + stretch.size)
    , m_dataFirst(stretch.first)
{
    takeValues(stretch.first, stretch.size);
}

SampleSpan::SampleSpan(const Stretch<QPointF> &stretch)
    : m_owner(stretch.owner)
    , m_points(stretch.array)
    , m_arraySize(stretch.first + stretch.size)
    , m_dataFirst(stretch.first)
    , m_first(stretch.first)
    , m_size(stretch.size)
{
}

void SampleSpan::takeValues(int first, int size)
{
    if (!std::isfinite(m_xFirst) || !std::isfinite(m_xInterval))
        return;
    m_size = size;
    m_first = first;
    if (m_xInterval < 0.0) {
        m_first = first + size - 1;
        m_step = -1;
    }
}

SampleSpan SampleSpan::mid(int first, int end) const
{
    first = qBound(0, first, m_size);
    SampleSpan result(*this);
    result.m_size = qBound(first, end, m_size) - first;
    result.m_first = arrayIndex(first);
    result.m_before = m_before + first;
    result.m_after = m_after + m_size - first - result.m_size;
    return result;
}

SampleSpan SampleSpan::withNeighbours() const
{
    const int before = std::min(m_before, 1);
    const int after = std::min(m_after, 1);
    SampleSpan result(*this);
    result.m_first = arrayIndex(-before);
    result.m_size += before + after;
    result.m_before -= before;
    result.m_after -= after;
    return result;
}

SampleSpan SampleSpan::reversed() const
{
    SampleSpan result(*this);
    result.m_first = arrayIndex(m_size - 1);
    result.m_step = -m_step;
    std::swap(result.m_before, result.m_after);
    result.m_reversed = !m_reversed;
    return result;
}

SampleSpan SampleSpan::between(double xMin, double xMax) const
{
    if (xMin > xMax)
        std::swap(xMin, xMax);
    if (std::isnan(xMin) || std::isnan(xMax))
        return mid(0, 0);
    const int first = countBelow(xMin);
    return mid(first, countUpTo(xMax, first));
}

MinMax SampleSpan::minMax(int first, int end) const
{
    first = qBound(0, first, m_size);
    end = qBound(first, end, m_size);
    if (first == end)
        return MinMax();
    const int low = lowest(first, end);
    const int count = end - first;
    return m_points ? minMaxOf(m_points, low, low + count) : minMaxOf(m_values, low, low + count);
}

template <typename Sample> MinMax SampleSpan::minMaxOf(const Sample *array, int first, int end) const
{
    if (m_pyramid)
        return m_pyramid->minMax(array, first, end);
    if (m_onDemand)
        return m_onDemand->minMax(array, m_arraySize, first, end);
    return graph::minMax(array + first, end - first);
}

const MinMaxPyramid *SampleSpan::pyramid() const
{
    if (m_pyramid)
        return m_pyramid.get();
    return m_onDemand ? m_onDemand->pyramid() : nullptr;
}

bool SampleSpan::hasNaN(int first, int end) const
{
    if (first == end)
        return false;
    const MinMaxPyramid *known = pyramid();
    if (known && !(m_points ? known->hasNaN(m_points, m_arraySize) : known->hasNaN(m_values, m_arraySize)))
        return false;
    const int low = lowest(first, end);
    return m_points ? graph::hasNaN(m_points + low, end - first) : graph::hasNaN(m_values + low, end - first);
}

int SampleSpan::countBelow(double value, int hint) const
{
    return leadingCount(m_size, near(value, hint), [&](int i) { return x(i) < value; });
}

int SampleSpan::countUpTo(double value, int hint) const
{
    return leadingCount(m_size, near(value, hint), [&](int i) { return x(i) <= value; });
}

// Where the search for an x starts: division lands at most a few samples beside it, rounding apart.
int SampleSpan::near(double value, int hint) const
{
    if (!isEquallySpaced())
        return hint;
    const double position = (value - m_xFirst) / m_xInterval - m_number; // in the array
    return truncatedIndex((position - m_first) * m_step);
}

QVector<QPointF> SampleSpan::toVector() const
{
    if (m_size > 0 && m_size == m_pointArray.size() && !m_reversed)
        return m_pointArray;
    QVector<QPointF> result(m_size);
    QPointF *out = result.data();
    for (int i = 0; i < m_size; ++i)
        out[i] = at(i);
    return result;
}

} // namespace graph
