#include "axis/AxisTicks.h"

#include "axis/TickSearch.h"

namespace graph {

double AxisTicks::spacing(int count, double extent, double factor) const
{
    if (m_kind == Fixed)
        return 0.0;
    if (m_customInterval != 0.0)
        return m_customInterval;
    return m_kind == Binary ? binarySpacing(count, extent, factor) : decimalSpacing(count, extent, factor);
}

double AxisTicks::decimalSpacing(int count, double extent, double factor) const
{
    return decimalInterval(extent * factor, count, m_positions) / factor;
}

double AxisTicks::binarySpacing(int count, double extent, double factor)
{
    return binaryInterval(extent * factor, count) / factor;
}

QList<qreal> AxisTicks::build(int count, const AxisRange &range, double factor) const
{
    const double lowest = m_decreasing ? range.mirrored(range.maxVisible()) : range.minVisible();
    const double highest = m_decreasing ? range.mirrored(range.minVisible()) : range.maxVisible();
    if (m_kind == Fixed)
        return ticksWithin(m_positions, lowest, highest);
    const double interval = spacing(count, range.visibleExtent(), factor);
    return interval > 0.0 ? spacedTicks(lowest, highest, interval) : QList<qreal>();
}

bool AxisTicks::isDirtyFor(int count)
{
    m_dirty = m_dirty || count != m_listCount;
    m_listCount = count;
    return m_dirty;
}

void AxisTicks::setList(const QList<qreal> &list)
{
    m_list = list;
    m_dirty = false;
}

} // namespace graph
