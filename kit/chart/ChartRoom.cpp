#include "kit/chart/ChartRoom.h"

#include "kit/axis/ChartAxis.h"
#include "kit/chart/ChartAxes.h"
#include "kit/chart/ChartTheme.h"
#include "kit/plots/ColorScale.h"
#include "view/base/XYScale.h"
#include "view/frame/GraphView.h"

#include <algorithm>

namespace graph {

ChartRoom::ChartRoom(const GraphView *chart, const ChartAxes *axes, const XYScale *labels)
    : m_chart(chart)
    , m_axes(axes)
    , m_labels(labels)
{
    connect(axes, &ChartAxes::roomChanged, this, &ChartRoom::changed);
    connect(labels, &XYScale::marginsChanged, this, &ChartRoom::changed);
}

void ChartRoom::setTheme(const ChartTheme &theme)
{
    m_fontSize = theme.fontSize();
    m_scales.setTheme(theme);
}

bool ChartRoom::takeScale(QQuickItem *child, const ChartTheme &theme)
{
    auto *scale = qobject_cast<ColorScale *>(child);
    if (!scale || !m_scales.take(scale, theme))
        return false;
    connect(scale, &QQuickItem::implicitWidthChanged, this, &ChartRoom::changed);
    connect(scale, &QQuickItem::visibleChanged, this, &ChartRoom::changed);
    connect(scale, &QObject::destroyed, this, &ChartRoom::changed);
    emit changed();
    return true;
}

QMargins ChartRoom::own() const
{
    const int size = m_fontSize;
    if (!m_axes->hasVisible())
        return {0, m_isTitled ? size * 5 / 2 : 0, m_scales.width(m_chart), 0};
    const int above = m_labels->margins().top(); // of axes there
    const int top = m_isTitled               ? std::max(size * 5 / 2, above > 0 ? above + size * 9 / 4 : 0)
                    : m_axes->hasUnitAbove() ? size * 9 / 4
                                             : size;
    // With the axes between them and the plot area.
    const int scales = m_scales.width(m_chart);
    const int right = scales == 0 ? 0 : m_labels->margins().right() + size / 2 + scales;
    // The last number is below its tick, half of it beyond the plot area; times are longer.
    const int half = m_axes->x()->scale() == ChartAxis::Time ? size * 9 / 4 : size * 3 / 2;
    return {size, top, std::max(half, right), size / 2};
}

bool ChartRoom::isCramped() const
{
    return m_chart->height() < 14.0 * m_fontSize;
}

QMargins ChartRoom::ofAxes() const
{
    return m_labels->margins();
}

void ChartRoom::placeScales() const
{
    const QQuickItem *area = m_chart->plotArea();
    if (area)
        m_scales.place(m_chart, QRectF(area->position(), area->size()),
                       area->x() + area->width() + m_labels->margins().right());
}

} // namespace graph
