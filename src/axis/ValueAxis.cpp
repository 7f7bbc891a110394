#include "axis/ValueAxis.h"

#include "axis/AxisPainting.h"
#include "axis/PlaneAccess.h"
#include "common/FuzzyEqual.h"
#include "common/SafeInteger.h"

#include <QMetaMethod>
#include <QTimerEvent>

#include <algorithm>
#include <cmath>

/*!
    \qmltype ValueAxis
    \inqmlmodule graph_plugin
    \brief One value axis: its range, what of it is visible, its ticks and its labels.

    Two axes on one side of a plane would cover each other's labels, because a margin is shared: put one of
    them on the other side.

    An axis whose plot is zoomed takes its visible range from the zoom rectangle; what was written to
    minVisible and maxVisible before is lost then.

    \qmlproperty enumeration ValueAxis::orientation
    \readonly
    Qt.Horizontal or Qt.Vertical, as the alignment has it; horizontal by default.

    \qmlproperty double ValueAxis::valueRange
    \readonly
    maxValue - minValue, in axis units.

    \qmlsignal ValueAxis::axisChanged()
    The axis has to be drawn anew: the properties with a notify signal changed, but not the visible range. Comes once for
    all changes within one pass of the event loop.

    \qmlmethod void ValueAxis::setLowerBound(double bound)
    \qmlmethod void ValueAxis::setUpperBound(double bound)
    Put an edge of the visible range to a fraction of the full range, 0 to 1, as the zoom rectangle does; not while
    scalable is false.

    \qmlmethod void ValueAxis::handleRectChanged()
    \qmlmethod void ValueAxis::handleMovingChanged()
    \internal
    Answers to the zoom rectangle.
*/
ValueAxis::ValueAxis(QObject *parent)
    : QObject(parent)
    , m_labelFont(QStringLiteral("Roboto"))
{
    m_labelFont.setPixelSize(16);
    connect(this, SIGNAL(alignmentChanged(Qt::Alignment)), SLOT(emitAxisChanged()));
    connect(this, SIGNAL(orientationChanged(Qt::Orientation)), SLOT(emitAxisChanged()));
    connect(this, SIGNAL(minValueChanged(double)), SLOT(emitAxisChanged()));
    connect(this, SIGNAL(maxValueChanged(double)), SLOT(emitAxisChanged()));
    connect(this, SIGNAL(marginChanged()), SLOT(emitAxisChanged()));
    connect(this, SIGNAL(visibleChanged(bool)), SLOT(emitAxisChanged()));
    connect(this, SIGNAL(formatterChanged()), SLOT(emitAxisChanged()));
    connect(this, SIGNAL(ticksChanged(QList<qreal>)), SLOT(emitAxisChanged()));
    connect(this, SIGNAL(labelFontChanged()), SLOT(emitAxisChanged()));
    connect(this, SIGNAL(verticalUnitLabelColorChanged()), SLOT(emitAxisChanged()));
    connect(this, SIGNAL(unitChanged()), SLOT(emitAxisChanged()));
    connect(this, SIGNAL(axisStyleChanged()), SLOT(emitAxisChanged()));
    connect(this, SIGNAL(rangeOrderChanged()), SLOT(emitAxisChanged()));
}

QString ValueAxis::formattedValue(double value) const
{
    if (m_formatter)
        return m_formatter->formatValue(value);
    const int index = m_ticks.indexOf(value);
    if (index >= 0) {
        const QStringList labels = tickLabels();
        if (index < labels.size())
            return labels.at(index);
    }
    return QString::number(value, 'g', 6);
}

XYScale *ValueAxis::labelsPlane() const
{
    return graph::itemPlane(m_labelsPlane);
}

XYScale *ValueAxis::linesPlane() const
{
    return graph::itemPlane(m_linesPlane);
}

/*!
    \qmlproperty int ValueAxis::requiredMargin
    The margin in pixels that the labels of the full range need; write \c {margin: requiredMargin} to have it.
    It does not change while zooming.
*/
int ValueAxis::requiredMargin() const
{
    return graph::AxisPainting::requiredMargin(*this);
}

void ValueAxis::setZoomRect(ZoomRect *zoomRect)
{
    if (zoomRect == m_zoomRect)
        return;
    if (m_zoomRect)
        m_zoomRect->disconnect(this);
    m_zoomRect = zoomRect;
    if (!zoomRect)
        return;
    connect(zoomRect, SIGNAL(rectChanged(QRectF)), SLOT(handleRectChanged()));
    connect(zoomRect, SIGNAL(movingChanged()), SLOT(handleMovingChanged()));
    if (m_orientation == Qt::Horizontal) {
        connect(zoomRect, SIGNAL(leftChanged(double)), SLOT(setLowerBound(double)));
        connect(zoomRect, SIGNAL(rightChanged(double)), SLOT(setUpperBound(double)));
        setLowerBound(zoomRect->left());
        setUpperBound(zoomRect->right());
    } else {
        connect(zoomRect, SIGNAL(topChanged(double)), SLOT(setLowerBound(double)));
        connect(zoomRect, SIGNAL(bottomChanged(double)), SLOT(setUpperBound(double)));
        setLowerBound(zoomRect->top());
        setUpperBound(zoomRect->bottom());
    }
}

void ValueAxis::handleValueRangeChanged()
{
    if (m_visibleRange > 0.0) {
        pushVisibleRange();
        return;
    }
    setLowerBound(m_lowerBound);
    setUpperBound(m_upperBound);
    emit visibleRangeChanged();
}

// Writes the visible edges again after a change of the full range, which moves them in the zoom rectangle.
void ValueAxis::pushVisibleRange()
{
    double lowest = m_minVisible;
    double highest = m_maxVisible;
    if (m_zoomRect) {
        // Between writes of both ends the range may be the wrong way round; the second write has room again.
        if (!(valueRange() > 0.0))
            return;
        const double span = highest - lowest;
        if (highest > m_maxValue) {
            highest = m_maxValue;
            lowest = std::max(m_minValue, highest - span);
        } else if (lowest < m_minValue) {
            lowest = m_minValue;
            highest = std::min(m_maxValue, lowest + span);
        }
        // The rectangle stops an edge short of the other one, which then has to make way first.
        const bool horizontal = m_orientation == Qt::Horizontal;
        const double farEdge = horizontal ? m_zoomRect->right() - m_zoomRect->minWidth()
                                          : m_zoomRect->bottom() - m_zoomRect->minHeight();
        if ((lowest - m_minValue) / valueRange() > farEdge)
            setMaxVisible(highest);
    }
    setMinVisible(lowest);
    setMaxVisible(highest);
}

void ValueAxis::paintLines(QPainter *painter, const QRectF &rect)
{
    graph::AxisPainting(*this, rect).paintLines(painter);
}

void ValueAxis::paintLabels(QPainter *painter, const QRectF &rect)
{
    graph::AxisPainting(*this, rect).paintLabels(painter, m_texts);
}

/*!
    \qmlproperty enumeration ValueAxis::alignment
    The side of the plane: Qt.AlignBottom (default), AlignTop, AlignVCenter and AlignBaseline make the axis
    horizontal, all others vertical. Give it as a plain literal, so that it is known before plots take the
    axis.
*/
void ValueAxis::setAlignment(Qt::Alignment alignment)
{
    if (alignment == m_alignment)
        return;
    m_alignment = alignment;
    const Qt::Alignment horizontal = Qt::AlignTop | Qt::AlignBottom | Qt::AlignVCenter | Qt::AlignBaseline;
    const Qt::Orientation orientation = alignment & horizontal ? Qt::Horizontal : Qt::Vertical;
    if (orientation != m_orientation) {
        m_orientation = orientation;
        emit orientationChanged(m_orientation);
    }
    emit alignmentChanged(m_alignment);
    emit marginChanged();
}

/*!
    \qmlproperty double ValueAxis::minValue
    The begin of the full range, 0 by default. While the chart is being flicked the write waits for the end.
*/
void ValueAxis::setMinValue(double minValue)
{
    m_pendingMinValue = minValue;
    if (minValue == m_minValue || (m_zoomRect && m_zoomRect->isMoving()))
        return;
    const bool pinned = m_visibleRange > 0.0 && graph::fuzzyEqual(m_minValue, m_minVisible);
    if (pinned) {
        m_minVisible = minValue;
        m_maxVisible = minValue + m_visibleRange;
        // A begin beyond the end is written on the way to a range further up, whose end follows.
        if (minValue < m_maxValue)
            m_maxVisible = std::min(m_maxValue, m_maxVisible);
    }
    m_ticksDirty = true;
    m_minValue = minValue;
    handleValueRangeChanged();
    emit minValueChanged(m_minValue);
    if (pinned) {
        emit minVisibleChanged(m_minVisible);
        emit maxVisibleChanged(m_maxVisible);
    }
    emit valueRangeChanged();
}

/*!
    \qmlproperty double ValueAxis::maxValue
    The end of the full range, 1 by default. While the chart is being flicked the write waits for the end.
*/
void ValueAxis::setMaxValue(double maxValue)
{
    m_pendingMaxValue = maxValue;
    if (maxValue == m_maxValue || (m_zoomRect && m_zoomRect->isMoving()))
        return;
    const bool pinned = m_visibleRange > 0.0 && graph::fuzzyEqual(m_maxValue, m_maxVisible);
    if (pinned) {
        m_maxVisible = maxValue;
        m_minVisible = maxValue - m_visibleRange;
        if (m_minValue < maxValue)
            m_minVisible = std::max(m_minValue, m_minVisible);
    }
    m_ticksDirty = true;
    m_maxValue = maxValue;
    handleValueRangeChanged();
    emit maxValueChanged(m_maxValue);
    if (pinned) {
        emit minVisibleChanged(m_minVisible);
        emit maxVisibleChanged(m_maxVisible);
    }
    emit valueRangeChanged();
}

/*!
    \qmlproperty double ValueAxis::minVisible
    The begin of the visible range, 0 by default. On a zoomed chart a write goes through the zoom rectangle, which clamps it
    against the other edge: write the farther edge first.
*/
void ValueAxis::setMinVisible(double minVisible)
{
    if (!m_zoomRect) {
        m_minVisible = minVisible;
        m_ticksDirty = true;
        emit minVisibleChanged(m_minVisible);
        return;
    }
    if (valueRange() == 0.0)
        return;
    const double fraction = (minVisible - m_minValue) / valueRange();
    if (m_orientation == Qt::Horizontal)
        m_zoomRect->setLeft(fraction);
    else
        m_zoomRect->setTop(fraction);
}

/*!
    \qmlproperty double ValueAxis::maxVisible
    The end of the visible range, 1 by default. See minVisible.
*/
void ValueAxis::setMaxVisible(double maxVisible)
{
    if (!m_zoomRect) {
        m_maxVisible = maxVisible;
        m_ticksDirty = true;
        emit maxVisibleChanged(m_maxVisible);
        return;
    }
    if (valueRange() == 0.0)
        return;
    const double fraction = (maxVisible - m_minValue) / valueRange();
    if (m_orientation == Qt::Horizontal)
        m_zoomRect->setRight(fraction);
    else
        m_zoomRect->setBottom(fraction);
}

/*!
    \qmlproperty double ValueAxis::visibleRange
    The width of the visible span in axis units; 0, the default, leaves it free.
*/
void ValueAxis::setVisibleRange(double visibleRange)
{
    if (visibleRange == m_visibleRange)
        return;
    m_visibleRange = visibleRange;
    if (m_visibleRange > 0.0) {
        setMaxVisible(std::min(m_minVisible + m_visibleRange, m_maxValue));
        setMinVisible(std::max(m_maxVisible - m_visibleRange, m_minValue));
    }
    emit visibleRangeChanged();
}

/*!
    \qmlproperty color ValueAxis::lineColor
    \qmlproperty color ValueAxis::linePen
    The colour of the grid lines under two names, black by default. Like the other line properties it shows with the
    next repaint and has no notify signal.

    \qmlproperty enumeration ValueAxis::lineJoinStyle
    The join of the lines' pen, Qt.BevelJoin by default; straight lines do not show it.

    \qmlproperty int ValueAxis::lineWidth
    The width of the lines in pixels, 1 by default; 0 is a line of one pixel too, negative values count as 0.

    \qmlproperty enumeration ValueAxis::lineStyle
    Qt.SolidLine (default), Qt.DashLine and the other pen styles; Qt.NoPen hides the lines.
*/
void ValueAxis::setLineColor(const QColor &color)
{
    m_linePen.setColor(color);
}

void ValueAxis::setLineJoinStyle(Qt::PenJoinStyle style)
{
    m_linePen.setJoinStyle(style);
}

/*!
    \qmlproperty list<real> ValueAxis::lineDashPattern
    Lengths of dashes and gaps in turn, in units of the line width. A write makes lineStyle Qt.CustomDashLine. The line
    is drawn solid when a length is negative, not finite or above 10000, and when they are shorter than half a unit on
    average; without a last gap, that is 1.
*/
void ValueAxis::setLineDashPattern(const QVector<qreal> &pattern)
{
    // Not into the pen, which warns of an odd number and changes it: drawing sees to what can be drawn.
    m_dashPattern = pattern;
    if (!pattern.isEmpty())
        m_linePen.setStyle(Qt::CustomDashLine);
}

QVector<qreal> ValueAxis::lineDashPattern() const
{
    return m_linePen.style() == Qt::CustomDashLine ? m_dashPattern : m_linePen.dashPattern();
}

void ValueAxis::setLineWidth(int width)
{
    m_linePen.setWidth(graph::penWidth(width));
}

void ValueAxis::setLineStyle(Qt::PenStyle style)
{
    m_linePen.setStyle(style);
}

/*!
    \qmlproperty color ValueAxis::labelColor
    \qmlproperty color ValueAxis::labelPen
    The colour of labels and unit under two names, black by default. Shows with the next repaint; without a notify
    signal.
*/
void ValueAxis::setLabelColor(const QColor &color)
{
    m_labelColor = color;
}

/*!
    \qmlproperty color ValueAxis::verticalUnitLabelColor
    The colour of the unit of a vertical axis; labelColor unless set, as by default.
*/
void ValueAxis::setVerticalUnitLabelColor(const QColor &color)
{
    if (color == m_verticalUnitLabelColor)
        return;
    m_verticalUnitLabelColor = color;
    emit verticalUnitLabelColorChanged();
}

/*!
    \qmlproperty font ValueAxis::labelFont
    The font of labels and unit, Roboto of 16 pixels by default. Shows with the next repaint; its signal is never
    emitted.
*/
void ValueAxis::setLabelFont(const QFont &font)
{
    m_labelFont = font;
    m_texts = {};
    updateRequiredMargin();
}

/*!
    \qmlproperty int ValueAxis::margin
    The room beside the plot area for the labels, in pixels. With 0, the default, they stand inside the plot
    area.
*/
void ValueAxis::setMargin(int margin)
{
    if (margin == m_margin)
        return;
    m_margin = margin;
    emit marginChanged();
}

/*!
    \qmlproperty bool ValueAxis::staggered
    Whether the labels of a horizontal axis take turns in two rows, where there is room for two; false by default.
*/
void ValueAxis::setStaggered(bool staggered)
{
    if (staggered == m_staggered)
        return;
    m_staggered = staggered;
    emit staggeredChanged();
    updateRequiredMargin();
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
    \qmlproperty bool ValueAxis::scalable
    Whether the visible range follows the zoom rectangle, true by default; else the full range is visible.
*/
void ValueAxis::setScalable(bool scalable)
{
    if (scalable == m_scalable)
        return;
    m_scalable = scalable;
    setLowerBound(m_lowerBound);
    setUpperBound(m_upperBound);
    emit scalableChanged();
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
    m_ticksDirty = true;
    emit axisStyleChanged();
}

/*!
    \qmlproperty enumeration ValueAxis::tickInterval
    ScaledDecimal (default) and ScaledBinary search a round spacing for numTicks ticks, DisplayDynamic for as
    many as dynamicTicksRatio of the axis' length has room for; FixedTicks shows those of the ticks that are
    visible. Without a notify signal.
*/
void ValueAxis::setTickInterval(TickInterval interval)
{
    if (interval == m_tickInterval)
        return;
    m_tickInterval = interval;
    m_ticksDirty = true;
    updateRequiredMargin();
}

/*!
    \qmlproperty int ValueAxis::numTicks
    About how many ticks are wanted, 5 by default; DisplayDynamic does not ask. Without a notify signal.
*/
void ValueAxis::setNumTicks(int count)
{
    if (count == m_numTicks)
        return;
    m_numTicks = count;
    m_ticksDirty = true;
    updateRequiredMargin();
}

/*!
    \qmlproperty double ValueAxis::dynamicTicksRatio
    The share of the axis' length that labels may fill with DisplayDynamic, 0.5 by default. Without a notify signal.
*/
void ValueAxis::setDynamicTicksRatio(double ratio)
{
    if (ratio == m_dynamicTicksRatio)
        return;
    m_dynamicTicksRatio = ratio;
    m_ticksDirty = true;
}

/*!
    \qmlproperty double ValueAxis::baseline
    Where bars and filled plots begin, in axis units, 0 by default. Without a notify signal.
*/
void ValueAxis::setBaseline(double baseline)
{
    if (baseline == m_baseline)
        return;
    m_baseline = baseline;
    m_ticksDirty = true;
}

/*!
    \qmlproperty list<real> ValueAxis::ticks
    The positions of FixedTicks. Otherwise the mantissas that a decimal spacing may have, ascending: 1, 1.5,
    2, 2.5, 5 and 10 by default.
*/
void ValueAxis::setTicks(const QList<qreal> &ticks)
{
    if (ticks == m_ticks)
        return;
    m_ticks = ticks;
    m_ticksDirty = true;
    emit ticksChanged(m_ticks);
}

/*!
    \qmlproperty list<string> ValueAxis::tickLabels
    The texts of the values that stand at the same place in ticks; an empty text shows none.
    Empty by default. Without a notify signal.
*/
void ValueAxis::setTickLabels(const QStringList &labels)
{
    m_tickLabels = labels;
    m_texts = {};
    updateRequiredMargin();
}

/*!
    \qmlproperty BaseFormatter ValueAxis::formatter
    Makes the texts of the labels; null, the default, shows tickLabels and plain numbers. The axis adopts a
    formatter that has no parent. It follows the digits of the data that a formatter belongs to; after other changes of a
    formatter the labels are right with the next repaint, see emitAxisChanged().
*/
void ValueAxis::setFormatter(BaseFormatter *formatter)
{
    if (formatter == m_formatter)
        return;
    m_formatter = formatter;
    m_ticksDirty = true;
    if (formatter && !formatter->parent())
        formatter->setParent(this);
    followDigits(formatter ? formatter->parent() : nullptr);
    emit formatterChanged();
}

// A formatter tells nobody that it formats differently; the data object that made it and sets its digits does.
void ValueAxis::followDigits(QObject *owner)
{
    static const char *const changes[] = {SIGNAL(xSigDigsChanged(int)), SIGNAL(ySigDigsChanged(int)),
                                          SIGNAL(xPrecisionChanged(int)), SIGNAL(yPrecisionChanged(int))};
    if (m_digitsOwner)
        disconnect(m_digitsOwner, nullptr, this, SLOT(emitAxisChanged()));
    m_digitsOwner = owner == this ? nullptr : owner;
    for (const char *change : changes) {
        if (m_digitsOwner && m_digitsOwner->metaObject()->indexOfSignal(change + 1) >= 0)
            connect(m_digitsOwner, change, this, SLOT(emitAxisChanged()));
    }
}

/*!
    \qmlproperty double ValueAxis::customInterval
    The distance of the ticks in axis units; 0, the default, has one searched, and a negative one
    leaves no ticks. Without a notify signal.
*/
void ValueAxis::setCustomInterval(double interval)
{
    m_customInterval = interval;
    m_ticksDirty = true;
    updateRequiredMargin();
}

/*!
    \qmlproperty enumeration ValueAxis::rangeOrder
    Increasing (default) or Decreasing: the ticks and labels are mirrored, the plots are not.
*/
void ValueAxis::setRangeOrder(AxisRangeOrder order)
{
    if (order == m_rangeOrder)
        return;
    m_rangeOrder = order;
    m_ticksDirty = true;
    emit rangeOrderChanged();
}

/*!
    \qmlproperty XYScale ValueAxis::labelsPlane
    \qmlproperty XYScale ValueAxis::linesPlane
    The planes that draw the labels and the grid lines. The view gives its default plane to an axis that names none,
    with a warning. Without notify signals; later changes count from the next change of the view's visible plots or
    their axes.
*/
void ValueAxis::setLabelsPlane(XYScale *plane)
{
    m_labelsPlane = graph::planeItem(plane);
}

void ValueAxis::setLinesPlane(XYScale *plane)
{
    m_linesPlane = graph::planeItem(plane);
}

/*!
    \qmlproperty string ValueAxis::unit
    Shown once beside the labels; empty by default.
*/
void ValueAxis::setUnit(const QString &unit)
{
    if (unit == m_unit)
        return;
    m_unit = unit;
    emit unitChanged();
}

void ValueAxis::setLowerBound(double bound)
{
    m_lowerBound = bound;
    const double minVisible = m_scalable ? m_minValue + valueRange() * bound : m_minValue;
    if (minVisible == m_minVisible)
        return;
    m_minVisible = minVisible;
    m_ticksDirty = true;
    m_rectChangePending = true;
    emit minVisibleChanged(m_minVisible);
}

void ValueAxis::setUpperBound(double bound)
{
    m_upperBound = bound;
    const double maxVisible = m_scalable ? m_minValue + valueRange() * bound : m_maxValue;
    if (maxVisible == m_maxVisible)
        return;
    m_maxVisible = maxVisible;
    m_ticksDirty = true;
    m_rectChangePending = true;
    emit maxVisibleChanged(m_maxVisible);
}

void ValueAxis::handleRectChanged()
{
    if (!m_rectChangePending)
        return;
    m_rectChangePending = false;
    emit visibleRangeChanged();
}

void ValueAxis::handleMovingChanged()
{
    if (!m_zoomRect || m_zoomRect->isMoving())
        return;
    setMinValue(m_pendingMinValue);
    setMaxValue(m_pendingMaxValue);
}

/*!
    \qmlmethod void ValueAxis::emitAxisChanged()
    Has the axis drawn anew, for example after its formatter has changed how it formats.
*/
void ValueAxis::emitAxisChanged()
{
    m_texts = {};
    // A pending timer is kept: one that is started again at every change would wait for as long as they come.
    if (m_axisChangedTimer == 0)
        m_axisChangedTimer = startTimer(0, Qt::CoarseTimer);
}

void ValueAxis::timerEvent(QTimerEvent *event)
{
    if (event->timerId() != m_axisChangedTimer) {
        QObject::timerEvent(event);
        return;
    }
    // Before the timer is killed: a margin that follows the required one then needs no second pass.
    updateRequiredMargin();
    killTimer(m_axisChangedTimer);
    m_axisChangedTimer = 0;
    emit axisChanged();
}

// Measuring texts is not free: only for those who listen.
void ValueAxis::updateRequiredMargin()
{
    if (!isSignalConnected(QMetaMethod::fromSignal(&ValueAxis::requiredMarginChanged)))
        return;
    const int required = requiredMargin();
    if (required == m_notifiedMargin)
        return;
    m_notifiedMargin = required;
    emit requiredMarginChanged();
}
