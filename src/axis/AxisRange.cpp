#include "axis/AxisRange.h"

#include "common/FuzzyEqual.h"

#include <algorithm>

namespace graph {

namespace {

// True when the edge was moved.
bool move(double &edge, double to)
{
    if (edge == to)
        return false;
    edge = to;
    return true;
}

} // namespace

bool AxisRange::moveMinValue(double minValue)
{
    const bool pinned = hasSpan() && fuzzyEqual(m_minValue, m_minVisible);
    if (pinned) {
        m_minVisible = minValue;
        m_maxVisible = minValue + m_span;
        // A begin beyond the end is written on the way to a range further up, whose end follows.
        if (minValue < m_maxValue)
            m_maxVisible = std::min(m_maxValue, m_maxVisible);
    }
    m_minValue = minValue;
    return pinned;
}

bool AxisRange::moveMaxValue(double maxValue)
{
    const bool pinned = hasSpan() && fuzzyEqual(m_maxValue, m_maxVisible);
    if (pinned) {
        m_maxVisible = maxValue;
        m_minVisible = maxValue - m_span;
        if (m_minValue < maxValue)
            m_minVisible = std::max(m_minValue, m_minVisible);
    }
    m_maxValue = maxValue;
    return pinned;
}

AxisRange::Edges AxisRange::visibleInside() const
{
    const double distance = visibleExtent();
    if (m_maxVisible > m_maxValue)
        return {std::max(m_minValue, m_maxValue - distance), m_maxValue};
    if (m_minVisible < m_minValue)
        return {m_minValue, std::min(m_maxValue, m_minValue + distance)};
    return {m_minVisible, m_maxVisible};
}

double AxisRange::mirrored(double value) const
{
    if (m_scaleKind == ScaleKind::Linear)
        return m_minValue + m_maxValue - value;
    return fullScale().valueAt(1.0 - fullScale().fraction(value));
}

ScaleEnds AxisRange::shownEnds() const
{
    const ScaleEnds ends{m_minValue, m_maxValue};
    return m_scaleKind == ScaleKind::Linear ? ends : positivePart(ends.begin, ends.end);
}

bool AxisRange::setLowerBound(double bound)
{
    m_lowerBound = bound;
    return move(m_minVisible, m_scalable ? fullScale().valueAt(bound) : shownEnds().begin);
}

bool AxisRange::setUpperBound(double bound)
{
    m_upperBound = bound;
    return move(m_maxVisible, m_scalable ? fullScale().valueAt(bound) : shownEnds().end);
}

} // namespace graph
