#include "view/zoom/ZoomInterval.h"

#include "common/FuzzyEqual.h"

#include <algorithm>
#include <cmath>

namespace graph {

namespace {

// Beyond this the sums of edges could overflow, and infinite edges would never settle.
constexpr double greatestEdge = 1e100;

bool isUsable(double value)
{
    return std::abs(value) <= greatestEdge;
}

// The lower limit wins when the two cross.
double clamped(double value, double lowest, double highest)
{
    return std::max(std::min(value, highest), lowest);
}

// Stores the new value of a part; false when it is the same but for rounding.
bool replace(double &part, double value)
{
    if (fuzzyEqual(part, value))
        return false;
    part = value;
    return true;
}

} // namespace

bool ZoomInterval::canBeBounds(double lowest, double room)
{
    return isUsable(lowest) && isUsable(room);
}

void ZoomInterval::setBounds(double lowest, double room)
{
    m_lowest = lowest;
    m_room = room;
}

bool ZoomInterval::setLeastExtent(double extent)
{
    if (extent == m_leastExtent || !isUsable(extent) || extent < 0.0)
        return false;
    m_leastExtent = extent;
    return true;
}

ZoomInterval::Changes ZoomInterval::setExtent(double extent)
{
    Changes changes;
    const double v = clamped(extent, m_leastExtent, highest() - m_begin);
    if (std::isnan(extent) || !replace(m_extent, v))
        return changes;
    if (replace(m_end, m_begin + v))
        changes.append(End);
    changes.append(Extent);
    return changes;
}

ZoomInterval::Changes ZoomInterval::setBegin(double begin)
{
    const double v = clamped(begin, m_lowest, m_end - m_leastExtent);
    if (std::isnan(begin) || !replace(m_begin, v))
        return {};
    Changes changes = setExtent(m_end - m_begin);
    changes.append(Begin);
    return changes;
}

ZoomInterval::Changes ZoomInterval::setEnd(double end)
{
    const double v = clamped(end, m_begin + m_leastExtent, highest());
    if (std::isnan(end) || !replace(m_end, v))
        return {};
    Changes changes = setExtent(m_end - m_begin);
    changes.append(End);
    return changes;
}

ZoomInterval::Changes ZoomInterval::moveBegin(double begin)
{
    if (std::isnan(begin) || !replace(m_begin, clamped(begin, m_lowest, highest() - m_extent)))
        return {};
    m_end = m_begin + m_extent;
    return {Begin, End};
}

ZoomInterval::Changes ZoomInterval::moveEnd(double end)
{
    if (std::isnan(end) || !replace(m_end, clamped(end, m_lowest + m_extent, highest())))
        return {};
    m_begin = m_end - m_extent;
    return {End, Begin};
}

ZoomInterval::Changes ZoomInterval::zoom(double extent, double center)
{
    const double v = allowedExtent(extent);
    const double begin = m_extent == 0.0 ? center - v / 2.0 : center - (center - m_begin) * v / m_extent;
    return std::isnan(extent) ? Changes() : resize(v, begin);
}

ZoomInterval::Changes ZoomInterval::scale(double extent, double center)
{
    const double v = allowedExtent(extent);
    return std::isnan(extent) ? Changes() : resize(v, center - 0.5 * v);
}

ZoomInterval::Changes ZoomInterval::resize(double extent, double begin)
{
    if (std::isnan(begin) || fuzzyEqual(extent, m_extent))
        return {};
    const double oldBegin = m_begin;
    m_begin = clamped(begin, m_lowest, highest() - extent);
    Changes changes = setExtent(extent);
    if (m_begin != oldBegin)
        changes.append(Begin);
    return changes;
}

// The edges are clamped one by one: at the bounds their distance can differ from the extent.
ZoomInterval::Changes ZoomInterval::show(double extent, double center, Part firstEdge)
{
    const double v = allowedExtent(extent);
    const double begin = clamped(center - v / 2.0, m_lowest, highest() - v);
    const double end = clamped(center + v / 2.0, m_lowest + v, highest());
    Changes changes;
    if (replace(m_extent, v))
        changes.append(Extent);
    if (!fuzzyEqualNearZero(m_begin, begin)) {
        m_begin = begin;
        changes.append(Begin);
    }
    if (replace(m_end, end))
        changes.append(End);
    if (firstEdge == End && changes.contains(Begin) && changes.contains(End))
        std::swap(changes[changes.size() - 1], changes[changes.size() - 2]);
    return changes;
}

ZoomInterval::Changes ZoomInterval::showFrom(double begin, double extent)
{
    const double v = allowedExtent(extent);
    const double first = clamped(begin, m_lowest, highest() - v);
    Changes changes;
    if (std::isnan(extent) || std::isnan(begin))
        return changes;
    if (replace(m_extent, v))
        changes.append(Extent);
    if (replace(m_begin, first))
        changes.append(Begin);
    if (replace(m_end, first + v))
        changes.append(End);
    return changes;
}

double ZoomInterval::allowedExtent(double extent) const
{
    return clamped(extent, m_leastExtent, m_room);
}

} // namespace graph
