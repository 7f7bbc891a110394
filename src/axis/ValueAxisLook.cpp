#include "axis/ValueAxis.h"

#include "axis/AxisPainting.h"
#include "common/SafeInteger.h"

#include <cmath>

// How the axis looks, and where.

namespace {

// Those that name a plane. Never destroyed: an axis may outlive static objects.
QVector<ValueAxis *> &axesOfPlanes()
{
    static auto *const axes = new QVector<ValueAxis *>;
    return *axes;
}

void noteAxisOfPlanes(ValueAxis *axis)
{
    if (!axesOfPlanes().contains(axis))
        axesOfPlanes().append(axis);
}

} // namespace

ValueAxis::~ValueAxis()
{
    axesOfPlanes().removeOne(this);
}

void ValueAxis::forgetPlane(const XYScale *plane)
{
    for (ValueAxis *axis : qAsConst(axesOfPlanes())) {
        if (axis->m_labelsPlane == plane)
            axis->m_labelsPlane = nullptr;
        if (axis->m_linesPlane == plane)
            axis->m_linesPlane = nullptr;
    }
}

/*!
    \qmlproperty enumeration ValueAxis::alignment
    The side of the plane: Qt.AlignBottom (default), AlignTop, AlignVCenter and AlignBaseline make the axis
    horizontal, all others vertical. Give it as a plain literal, so that it is known before plots take the
    axis.
*/
void ValueAxis::setAlignment(Qt::Alignment alignment)
{
    if (alignment == m_look.alignment)
        return;
    m_look.alignment = alignment;
    const Qt::Alignment horizontal = Qt::AlignTop | Qt::AlignBottom | Qt::AlignVCenter | Qt::AlignBaseline;
    const Qt::Orientation orientation = alignment & horizontal ? Qt::Horizontal : Qt::Vertical;
    if (orientation != m_look.orientation) {
        m_look.orientation = orientation;
        emit orientationChanged(m_look.orientation);
    }
    emit alignmentChanged(m_look.alignment);
    emit marginChanged();
}

/*!
    \qmlproperty color ValueAxis::lineColor
    \qmlproperty color ValueAxis::linePen
    The colour of the grid lines under two names, black by default. Like the other line properties it shows
    with the next repaint and has no notify signal.

    \qmlproperty enumeration ValueAxis::lineJoinStyle
    The join of the lines' pen, Qt.BevelJoin by default; straight lines do not show it.

    \qmlproperty int ValueAxis::lineWidth
    The width of the lines in pixels, 1 by default; 0 is a line of one pixel too, negative values count as 0.

    \qmlproperty enumeration ValueAxis::lineStyle
    Qt.SolidLine (default), Qt.DashLine and the other pen styles; Qt.NoPen hides the lines.
*/
void ValueAxis::setLineColor(const QColor &color)
{
    m_look.linePen.setColor(color);
}

void ValueAxis::setLineJoinStyle(Qt::PenJoinStyle style)
{
    m_look.linePen.setJoinStyle(style);
}

/*!
    \qmlproperty list<real> ValueAxis::lineDashPattern
    Lengths of dashes and gaps in turn, in units of the line width. A write makes lineStyle Qt.CustomDashLine.
    The line is drawn solid when a length is negative, not finite or above 10000, and when they are shorter
    than half a unit on average; without a last gap, that is 1.
*/
void ValueAxis::setLineDashPattern(const QVector<qreal> &pattern)
{
    // Not into the pen, which warns of an odd number and changes it: drawing uses what can be drawn.
    m_look.dashes = pattern;
    if (!pattern.isEmpty())
        m_look.linePen.setStyle(Qt::CustomDashLine);
}

QVector<qreal> ValueAxis::lineDashPattern() const
{
    return m_look.linePen.style() == Qt::CustomDashLine ? m_look.dashes : m_look.linePen.dashPattern();
}

void ValueAxis::setLineWidth(int width)
{
    m_look.linePen.setWidth(graph::penWidth(width));
}

void ValueAxis::setLineStyle(Qt::PenStyle style)
{
    m_look.linePen.setStyle(style);
}

/*!
    \qmlproperty color ValueAxis::labelColor
    \qmlproperty color ValueAxis::labelPen
    The colour of labels and unit under two names, black by default. Shows with the next repaint; without a
    notify signal.
*/
void ValueAxis::setLabelColor(const QColor &color)
{
    m_look.labelColor = color;
}

/*!
    \qmlproperty color ValueAxis::verticalUnitLabelColor
    The colour of the unit of a vertical axis; labelColor unless set, as by default.
*/
void ValueAxis::setVerticalUnitLabelColor(const QColor &color)
{
    if (color == m_look.verticalUnitColor)
        return;
    m_look.verticalUnitColor = color;
    emit verticalUnitLabelColorChanged();
}

/*!
    \qmlproperty font ValueAxis::labelFont
    The font of labels and unit, Roboto of 16 pixels by default. Shows with the next repaint; its signal is
    never emitted.
*/
void ValueAxis::setLabelFont(const QFont &font)
{
    m_look.labelFont = font;
    m_texts.clear();
    updateRequiredMargin();
}

/*!
    \qmlproperty int ValueAxis::margin
    The room beside the plot area for the labels, in pixels. With 0, the default, they are inside the plot
    area.
*/
void ValueAxis::setMargin(int margin)
{
    if (margin == m_look.margin)
        return;
    m_look.margin = margin;
    emit marginChanged();
}

/*!
    \qmlproperty bool ValueAxis::staggered
    Whether the labels of a horizontal axis take turns in two rows, where there is room for two; false by
    default.
*/
void ValueAxis::setStaggered(bool staggered)
{
    if (staggered == m_look.staggered)
        return;
    m_look.staggered = staggered;
    emit staggeredChanged();
    updateRequiredMargin();
}

/*!
    \qmlproperty string ValueAxis::unit
    Shown once beside the labels; empty by default. Where it has no room of its own it is written behind the
    outermost number, or inside the plot area.
*/
void ValueAxis::setUnit(const QString &unit)
{
    if (unit == m_look.unit)
        return;
    m_look.unit = unit;
    emit unitChanged();
}

/*!
    \qmlproperty bool ValueAxis::visible
    Whether lines and labels are drawn, true by default. A hidden axis keeps its margin.
*/
void ValueAxis::setVisible(bool visible)
{
    if (visible == m_visible)
        return;
    m_visible = visible;
    emit visibleChanged(m_visible);
}

/*!
    \qmlproperty enumeration ValueAxis::axisStyle
    TicksAndLabels (default), TicksOnly or LabelsOnly.
*/
void ValueAxis::setAxisStyle(AxisStyle style)
{
    if (style == m_axisStyle)
        return;
    m_axisStyle = style;
    m_ticks.setDirty(true);
    emit axisStyleChanged();
}

/*!
    \qmlproperty XYScale ValueAxis::labelsPlane
    \qmlproperty XYScale ValueAxis::linesPlane
    The planes that draw the labels and the grid lines. The view gives its default plane to an axis that names
    none, with a warning. Without notify signals; later changes count from the next change of the view's
    visible plots or their axes.
*/
void ValueAxis::setLabelsPlane(XYScale *plane)
{
    m_labelsPlane = plane;
    noteAxisOfPlanes(this);
}

void ValueAxis::setLinesPlane(XYScale *plane)
{
    m_linesPlane = plane;
    noteAxisOfPlanes(this);
}

bool ValueAxis::setMarginOffset(int offset)
{
    if (offset == m_look.offset)
        return false;
    m_look.offset = offset;
    return true;
}

graph::AxisLook ValueAxis::look() const
{
    graph::AxisLook look = m_look;
    look.hasLines = m_visible && m_axisStyle != LabelsOnly;
    look.hasLabels = m_visible && m_axisStyle != TicksOnly;
    return look;
}

void ValueAxis::paintLines(QPainter *painter, const QRectF &rect)
{
    if (!m_visible || m_axisStyle == LabelsOnly || !graph::TickMarks::areDrawable(m_range, rect.size()))
        return;
    const graph::TickSet set = tickSet(rect);
    graph::paintAxisLines(painter, look(), graph::TickMarks(set, m_range, orientation(), rect.size()), rect);
}

void ValueAxis::paintLabels(QPainter *painter, const QRectF &rect,
                            const graph::LabelSurroundings &surroundings)
{
    if (!m_visible || m_axisStyle == TicksOnly || !graph::TickMarks::areDrawable(m_range, rect.size()))
        return;
    const graph::TickSet set = tickSet(rect);
    // What repeated adding leaves of a zero would read 1.4e-17.
    const graph::LabelTexts::Format format = [this, &set](double tick) {
        return formattedValue(std::abs(tick) < 1e-9 * set.interval ? 0.0 : tick);
    };
    m_texts.beginLayout(set.interval);
    // A formatter may answer differently at any time, without notice: its digits come over the bus.
    if (m_formatter && !m_texts.areStill(format)) {
        // Not at once: this is a repaint, perhaps in another thread.
        QMetaObject::invokeMethod(
            this, [this] { updateRequiredMargin(); }, Qt::QueuedConnection);
    }
    const graph::TickMarks marks(set, m_range, orientation(), rect.size());
    const graph::AxisLook drawn = look();
    graph::paintAxisLabels(painter, {drawn, marks, m_texts, format}, rect, surroundings);
}
