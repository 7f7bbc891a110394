#include "kit/plots/FollowedLevels.h"

#include <cmath>

namespace graph {

bool FollowedLevels::writeFrom(const std::optional<double> &level)
{
    return write(&m_writtenFrom, level);
}

bool FollowedLevels::writeTo(const std::optional<double> &level)
{
    return write(&m_writtenTo, level);
}

bool FollowedLevels::write(std::optional<double> *end, const std::optional<double> &level)
{
    *end = level;
    if (!level)
        m_hasSeen = false;
    return change(m_writtenFrom.value_or(m_levels.from), m_writtenTo.value_or(m_levels.to));
}

bool FollowedLevels::see(const MinMax &levels)
{
    if ((m_writtenFrom && m_writtenTo) || levels.isEmpty() || !std::isfinite(levels.max - levels.min))
        return false;
    constexpr double headRoom = 0.05;
    const double room = headRoom * (levels.max > levels.min ? levels.max - levels.min : 1.0);
    const bool isBelow = !m_hasSeen || levels.min < m_levels.from;
    const bool isAbove = !m_hasSeen || levels.max > m_levels.to;
    m_hasSeen = true;
    return change(m_writtenFrom.value_or(isBelow ? levels.min - room : m_levels.from),
                  m_writtenTo.value_or(isAbove ? levels.max + room : m_levels.to));
}

bool FollowedLevels::change(double from, double to)
{
    const WaterfallLevels former = m_levels;
    m_levels = {from, to};
    return !(m_levels == former);
}

} // namespace graph
