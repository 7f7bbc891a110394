#include "axis/TickMarks.h"

#include <cmath>

namespace graph {

TickMarks::TickMarks(const TickSet &set, const AxisRange &range, Qt::Orientation orientation,
                     const QSizeF &area)
    : m_set(set)
    , m_range(range)
    , m_horizontal(orientation == Qt::Horizontal)
    , m_length(m_horizontal ? area.width() : area.height())
    , m_scale(m_horizontal ? PixelScale(range.scaleKind(), {range.minVisible(), range.maxVisible()},
                                        range.visibleExtent(), m_length)
                           : PixelScale(range.scaleKind(), {range.maxVisible(), range.minVisible()},
                                        -range.visibleExtent(), m_length))
{
}

bool TickMarks::areDrawable(const AxisRange &range, const QSizeF &area)
{
    return PixelMapping(range.minVisible(), range.maxVisible(), range.visibleExtent(), range.visibleExtent(),
                        area)
        .isDrawable();
}

double TickMarks::place(double tick) const
{
    return m_scale.coordinate(m_set.isDecreasing ? m_range.mirrored(tick) : tick);
}

QVector<TickMarks::Mark> TickMarks::visible() const
{
    QVector<Mark> marks;
    marks.reserve(m_set.ticks.size());
    for (int i = 0; i < m_set.ticks.size(); ++i) {
        const double at = place(m_set.ticks.at(i));
        if (at > -1.0 && at < m_length)
            marks.append({i, at});
    }
    return marks;
}

bool TickMarks::isExtreme(double tick) const
{
    const double tolerance = 1e-9 * std::abs(m_set.interval);
    return std::abs(tick - m_range.minValue()) <= tolerance ||
           std::abs(tick - m_range.maxValue()) <= tolerance;
}

double TickMarks::firstOnGrid() const
{
    return std::ceil(m_range.minValue() / m_set.interval) * m_set.interval;
}

double TickMarks::lastOnGrid() const
{
    return std::floor(m_range.maxValue() / m_set.interval) * m_set.interval;
}

} // namespace graph
