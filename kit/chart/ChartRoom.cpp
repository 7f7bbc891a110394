#include "kit/chart/ChartRoom.h"

#include "kit/axis/ChartAxis.h"
#include "kit/chart/ChartAxes.h"
#include "kit/chart/ChartTheme.h"
#include "kit/plots/ColorScale.h"
#include "view/base/XYScale.h"
#include "view/frame/GraphView.h"

#include <QFontMetrics>

#include <algorithm>
#include <cmath>

namespace graph {

namespace {

constexpr int rowGap = 2; // below the names of traces, in pixels

} // namespace

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

void ChartRoom::setLegendRow(QQuickItem *row)
{
    if (m_legendRow == row)
        return;
    if (m_legendRow) {
        disconnect(m_legendRow, nullptr, this, nullptr);
        m_legendRow->setY(0.0);
    }
    m_legendRow = row;
    if (row)
        connect(row, &QQuickItem::heightChanged, this, &ChartRoom::changed);
    emit changed();
}

// Of the names above the plot area: in the row of a unit, if there is one.
int ChartRoom::legendLift(AxisRows rows) const
{
    const int above = m_axes->heightBeside(Qt::AlignTop, rows);
    if (m_isTitled || above > 0 || !m_axes->hasUnitAbove(rows))
        return above + rowGap;
    const int unitMiddle = QFontMetrics(m_axes->y()->labelFont()).height() * 5 / 4;
    return std::max(rowGap, unitMiddle - int(m_legendRow->height() / 2.0));
}

int ChartRoom::topWith(AxisRows rows) const
{
    const int size = m_fontSize;
    const bool isTitled = m_isTitled && rows < AxisRows::WithoutTitles;
    const int above = m_axes->heightBeside(Qt::AlignTop, rows);
    const int names = m_legendRow ? int(std::ceil(m_legendRow->height())) + legendLift(rows) : 0;
    if (isTitled)
        return std::max(size * 5 / 2, above > 0 || names > 0 ? std::max(above, names) + size * 9 / 4 : 0);
    return std::max({m_axes->hasUnitAbove(rows) ? size * 9 / 4 : size, above, names});
}

QMargins ChartRoom::own() const
{
    const int size = m_fontSize;
    // Without axes the plot area is all of the chart, with the names in it.
    if (!m_axes->hasVisible())
        return {0, m_isTitled ? size * 5 / 2 : 0, m_scales.width(m_chart), 0};
    const int top = topWith(rows());
    // With the axes between them and the plot area.
    const int scales = m_scales.width(m_chart);
    const int right = scales == 0 ? 0 : m_labels->margins().right() + size / 2 + scales;
    // The last number is below its tick, half of it beyond the plot area; times are longer.
    const int half = m_axes->x()->scale() == ChartAxis::Time ? size * 9 / 4 : size * 3 / 2;
    return {size, top, std::max(half, right), size / 2};
}

AxisRows ChartRoom::rows() const
{
    constexpr double leastPart = 0.4; // of the height, for the plot area
    const double height = m_chart->height();
    if (!m_axes->hasVisible())
        return AxisRows::All;
    for (const AxisRows rows : {AxisRows::All, AxisRows::WithoutUnits, AxisRows::WithoutTitles}) {
        if (rows == AxisRows::All && height < 14.0 * m_fontSize)
            continue;
        const int below = std::max(m_axes->heightBeside(Qt::AlignBottom, rows), m_fontSize / 2);
        if (height - topWith(rows) - below >= leastPart * height)
            return rows;
    }
    return AxisRows::None;
}

// Above the numbers of vertical axes.
bool ChartRoom::hasRoomForUnits() const
{
    return topWith(rows()) >= m_fontSize * 9 / 4 && m_axes->heightBeside(Qt::AlignTop, rows()) == 0;
}

QMargins ChartRoom::ofAxes() const
{
    return m_labels->margins();
}

void ChartRoom::placeParts() const
{
    const QQuickItem *area = m_chart->plotArea();
    if (!area)
        return;
    m_scales.place(m_chart, QRectF(area->position(), area->size()),
                   area->x() + area->width() + m_labels->margins().right());
    if (m_legendRow)
        m_legendRow->setY(m_axes->hasVisible() ? -legendLift(rows()) - m_legendRow->height() : 0.0);
}

} // namespace graph
