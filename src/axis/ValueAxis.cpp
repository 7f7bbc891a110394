#include "axis/ValueAxis.h"

#include "axis/PlaneAccess.h"
#include "axis/TickSearch.h"
#include "data/AxisAccess.h"
#include "platform/ui/SystemLocale.h"
#include "view/zoom/ZoomRect.h"

#include <QDebug>
#include <QFontMetrics>
#include <QTimerEvent>

#include <algorithm>

QObject *graph::axisObject(ValueAxis *axis)
{
    return axis;
}

double graph::axisBaseline(ValueAxis *axis)
{
    return axis ? axis->baseline() : 0.0;
}

/*!
    \qmltype ValueAxis
    \inqmlmodule graph_plugin
    \brief A horizontal or vertical axis: its full and visible range, its ticks, and how they are drawn.

    Plots hand the zoom rectangle of their view to their axes; from then on minVisible and maxVisible follow it, and a
    value written to them goes to the rectangle, which may clamp it: write the edge that moves away first. Without a
    zoom rectangle, a change of the full range sets the visible range to it.
*/
ValueAxis::ValueAxis(QObject *parent)
    : QObject(parent)
    , m_labelFont(QStringLiteral("Roboto"))
{
    m_labelFont.setPixelSize(16);
    // Moved visible edges are not among these: they come with each frame of a flick.
    for (const char *change :
         {SIGNAL(alignmentChanged(Qt::Alignment)), SIGNAL(orientationChanged(Qt::Orientation)),
          SIGNAL(minValueChanged(double)), SIGNAL(maxValueChanged(double)), SIGNAL(marginChanged()),
          SIGNAL(visibleChanged(bool)), SIGNAL(formatterChanged()), SIGNAL(ticksChanged(QList<qreal>)),
          SIGNAL(labelFontChanged()), SIGNAL(verticalUnitLabelColorChanged()), SIGNAL(unitChanged()),
          SIGNAL(axisStyleChanged()), SIGNAL(rangeOrderChanged())})
        connect(this, change, this, SLOT(emitAxisChanged()));
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
    \qmlproperty enumeration ValueAxis::alignment
    The side of the view on which the axis stands, Qt.AlignBottom by default; it decides the orientation. Give it as a
    plain literal: plots refuse an axis of the wrong orientation while a binding is still to be evaluated.
*/
void ValueAxis::setAlignment(Qt::Alignment alignment)
{
    if (m_alignment == alignment)
        return;
    m_alignment = alignment;
    const Qt::Alignment horizontal = Qt::AlignTop | Qt::AlignBottom | Qt::AlignVCenter | Qt::AlignBaseline;
    const Qt::Orientation orientation = alignment & horizontal ? Qt::Horizontal : Qt::Vertical;
    if (m_orientation != orientation) {
        m_orientation = orientation;
        emit orientationChanged(orientation);
    }
    emit alignmentChanged(alignment);
    emit marginChanged();
    updateRequiredMargin();
}

/*!
    \qmlproperty double ValueAxis::minValue
    The start of the full range, 0 by default. While a finger moves the zoom rectangle a new value is kept back until
    the movement ends.
*/
void ValueAxis::setMinValue(double minValue)
{
    m_pendingMinValue = minValue;
    if (m_minValue == minValue || (zoomRect() && zoomRect()->isMoving()))
        return;
    if (m_visibleRange > 0.0 && qFuzzyCompare(m_minValue, m_minVisible)) {
        // The visible span is pinned to the start of the range and moves with it.
        m_minVisible = minValue;
        m_maxVisible = std::min(m_maxValue, minValue + m_visibleRange);
        m_ticksDirty = true;
        m_minValue = minValue;
        handleValueRangeChanged();
        emit minValueChanged(m_minValue);
        emit minVisibleChanged(m_minVisible);
        emit maxVisibleChanged(m_maxVisible);
    } else {
        m_minValue = minValue;
        m_ticksDirty = true;
        handleValueRangeChanged();
        emit minValueChanged(m_minValue);
    }
    updateRequiredMargin();
    emit valueRangeChanged();
}

/*!
    \qmlproperty double ValueAxis::maxValue
    The end of the full range, 1 by default. See minValue.
*/
void ValueAxis::setMaxValue(double maxValue)
{
    m_pendingMaxValue = maxValue;
    if (m_maxValue == maxValue || (zoomRect() && zoomRect()->isMoving()))
        return;
    if (m_visibleRange > 0.0 && qFuzzyCompare(m_maxValue, m_maxVisible)) {
        m_maxVisible = maxValue;
        m_minVisible = std::max(m_minValue, maxValue - m_visibleRange);
        m_ticksDirty = true;
        m_maxValue = maxValue;
        handleValueRangeChanged();
        emit maxValueChanged(m_maxValue);
        emit minVisibleChanged(m_minVisible);
        emit maxVisibleChanged(m_maxVisible);
    } else {
        m_maxValue = maxValue;
        m_ticksDirty = true;
        handleValueRangeChanged();
        emit maxValueChanged(m_maxValue);
    }
    updateRequiredMargin();
    emit valueRangeChanged();
}

void ValueAxis::handleMovingChanged()
{
    if (!zoomRect() || zoomRect()->isMoving())
        return;
    setMinValue(m_pendingMinValue);
    setMaxValue(m_pendingMaxValue);
}

void ValueAxis::handleValueRangeChanged()
{
    if (m_visibleRange > 0.0) {
        setMinVisible(m_minVisible);
        setMaxVisible(m_maxVisible);
        return;
    }
    setLowerBound(m_lowerBound);
    setUpperBound(m_upperBound);
    emit visibleRangeChanged();
}

void ValueAxis::setLowerBound(double bound)
{
    m_lowerBound = bound;
    const double minVisible = m_scalable ? m_minValue + (m_maxValue - m_minValue) * bound : m_minValue;
    if (m_minVisible == minVisible)
        return;
    m_minVisible = minVisible;
    m_ticksDirty = true;
    m_rectChangePending = true;
    emit minVisibleChanged(minVisible);
}

void ValueAxis::setUpperBound(double bound)
{
    m_upperBound = bound;
    const double maxVisible = m_scalable ? m_minValue + (m_maxValue - m_minValue) * bound : m_maxValue;
    if (m_maxVisible == maxVisible)
        return;
    m_maxVisible = maxVisible;
    m_ticksDirty = true;
    m_rectChangePending = true;
    emit maxVisibleChanged(maxVisible);
}

void ValueAxis::handleRectChanged()
{
    if (!m_rectChangePending)
        return;
    m_rectChangePending = false;
    emit visibleRangeChanged();
}

/*!
    \qmlproperty double ValueAxis::minVisible
    The start of the visible range. With a zoom rectangle a write moves the rectangle's edge.
*/
void ValueAxis::setMinVisible(double minVisible)
{
    if (ZoomRect *rect = zoomRect()) {
        if (m_maxValue == m_minValue)
            return;
        const double fraction = (minVisible - m_minValue) / (m_maxValue - m_minValue);
        if (m_orientation == Qt::Horizontal)
            rect->setLeft(fraction);
        else
            rect->setTop(fraction);
        return;
    }
    m_minVisible = minVisible;
    m_ticksDirty = true;
    emit minVisibleChanged(minVisible);
}

/*!
    \qmlproperty double ValueAxis::maxVisible
    The end of the visible range. With a zoom rectangle a write moves the rectangle's edge.
*/
void ValueAxis::setMaxVisible(double maxVisible)
{
    if (ZoomRect *rect = zoomRect()) {
        if (m_maxValue == m_minValue)
            return;
        const double fraction = (maxVisible - m_minValue) / (m_maxValue - m_minValue);
        if (m_orientation == Qt::Horizontal)
            rect->setRight(fraction);
        else
            rect->setBottom(fraction);
        return;
    }
    m_maxVisible = maxVisible;
    m_ticksDirty = true;
    emit maxVisibleChanged(maxVisible);
}

/*!
    \qmlproperty double ValueAxis::visibleRange
    A width that the visible range keeps, in axis units; 0, the default, leaves it free.
*/
void ValueAxis::setVisibleRange(double visibleRange)
{
    if (m_visibleRange == visibleRange)
        return;
    m_visibleRange = visibleRange;
    if (visibleRange > 0.0) {
        setMaxVisible(std::min(m_minVisible + visibleRange, m_maxValue));
        setMinVisible(std::max(m_maxVisible - visibleRange, m_minValue));
    }
    emit visibleRangeChanged();
}

void ValueAxis::setZoomRect(ZoomRect *zoomRect)
{
    if (m_zoomRect == zoomRect)
        return;
    if (m_zoomRect)
        disconnect(m_zoomRect, nullptr, this, nullptr);
    m_zoomRect = zoomRect;
    if (!zoomRect)
        return;
    connect(zoomRect, SIGNAL(rectChanged(QRectF)), this, SLOT(handleRectChanged()));
    connect(zoomRect, SIGNAL(movingChanged()), this, SLOT(handleMovingChanged()));
    if (m_orientation == Qt::Horizontal) {
        connect(zoomRect, SIGNAL(leftChanged(double)), this, SLOT(setLowerBound(double)));
        connect(zoomRect, SIGNAL(rightChanged(double)), this, SLOT(setUpperBound(double)));
        setLowerBound(zoomRect->left());
        setUpperBound(zoomRect->right());
    } else {
        connect(zoomRect, SIGNAL(topChanged(double)), this, SLOT(setLowerBound(double)));
        connect(zoomRect, SIGNAL(bottomChanged(double)), this, SLOT(setUpperBound(double)));
        setLowerBound(zoomRect->top());
        setUpperBound(zoomRect->bottom());
    }
}

/*!
    \qmlproperty bool ValueAxis::scalable
    Whether the visible range follows the zoom (true, the default) or stays the full range.
*/
void ValueAxis::setScalable(bool scalable)
{
    if (m_scalable == scalable)
        return;
    m_scalable = scalable;
    setLowerBound(m_lowerBound);
    setUpperBound(m_upperBound);
    emit scalableChanged();
}

double ValueAxis::localizationFactor() const
{
    if (!m_formatter)
        return 1.0;
    const QString type = m_formatter->getType();
    if (type != QLatin1String("FeetFormatter") && type != QLatin1String("FeetFormatterScaled"))
        return 1.0;
    return SystemLocale::instance().getMeasurementSystem() == 0 ? 0.3048 : 1.0;
}

QString ValueAxis::formattedValue(double value) const
{
    if (m_formatter)
        return m_formatter->formatValue(value);
    const int index = m_ticks.indexOf(value);
    if (index >= 0 && index < m_tickLabels.size())
        return m_tickLabels[index];
    return QString::number(value, 'g', 6);
}

QList<qreal> ValueAxis::ticks(int count)
{
    if (m_lastTickCount != count) {
        m_ticksDirty = true;
        m_lastTickCount = count;
    }
    if (m_ticksDirty) {
        m_cachedTicks = buildTicks(count < 1 ? m_numTicks : count);
        m_ticksDirty = false;
    }
    return m_cachedTicks;
}

QList<qreal> ValueAxis::buildTicks(int count) const
{
    double lowest = m_minVisible;
    double highest = m_maxVisible;
    if (m_rangeOrder == Decreasing) {
        const double sum = m_minValue + m_maxValue;
        lowest = sum - m_maxVisible;
        highest = sum - m_minVisible;
    }
    if (m_tickInterval == FixedTicks)
        return graph::ticksBetween(m_ticks, lowest, highest);
    double interval = m_customInterval;
    if (interval == 0.0)
        interval = m_tickInterval == ScaledBinary ? interval2(count) : interval10(count);
    if (!(interval > 0.0)) {
        qDebug() << this << "buildTicks() interval = 0!!!";
        return {};
    }
    return graph::tickValues(lowest, highest, interval);
}

double ValueAxis::interval10(int count) const
{
    const double factor = localizationFactor();
    return graph::decimalInterval((m_maxVisible - m_minVisible) * factor, count, m_ticks) / factor;
}

double ValueAxis::interval2(int count) const
{
    const double factor = localizationFactor();
    return graph::binaryInterval((m_maxVisible - m_minVisible) * factor, count) / factor;
}

int ValueAxis::computeTickCountH(double width) const
{
    return m_tickInterval == DisplayDynamic
               ? computeTickCount(width, estimateAverageLabelWidth(), m_dynamicTicksRatio)
               : m_numTicks;
}

int ValueAxis::computeTickCountV(double height) const
{
    return m_tickInterval == DisplayDynamic ? computeTickCount(height, getLabelHeight(), m_dynamicTicksRatio)
                                            : m_numTicks;
}

int ValueAxis::computeTickCount(double length, double labelSize, double ratio)
{
    if (!(labelSize > 0.0)) {
        qWarning("%s - labelSize is %g, expected value > 0", "computeTickCount", labelSize);
        return 5;
    }
    return graph::tickCount(length, labelSize, ratio);
}

int ValueAxis::estimateAverageLabelWidth() const
{
    return QFontMetrics(m_labelFont).boundingRect(QLatin1Char('0')).width() * 5;
}

int ValueAxis::getLabelHeight() const
{
    return QFontMetrics(m_labelFont).height();
}

void ValueAxis::emitAxisChanged()
{
    if (m_axisChangedTimer != 0)
        killTimer(m_axisChangedTimer);
    m_axisChangedTimer = startTimer(0, Qt::CoarseTimer);
}

void ValueAxis::timerEvent(QTimerEvent *event)
{
    if (m_axisChangedTimer == 0 || event->timerId() != m_axisChangedTimer) {
        QObject::timerEvent(event);
        return;
    }
    killTimer(m_axisChangedTimer);
    m_axisChangedTimer = 0;
    emit axisChanged();
}

// Setters that store a differing value and announce it.

/*!
    \qmlproperty int ValueAxis::margin
    The room in pixels beside the plot area that the labels get, 0 by default: then they are drawn inside the area.
    \c {margin: requiredMargin} fits.
*/
void ValueAxis::setMargin(int margin)
{
    if (m_margin == margin)
        return;
    m_margin = margin;
    emit marginChanged();
}

/*!
    \qmlproperty bool ValueAxis::staggered
    Whether the labels of a horizontal axis alternate between two rows; false by default.
*/
void ValueAxis::setStaggered(bool staggered)
{
    if (m_staggered == staggered)
        return;
    m_staggered = staggered;
    emit staggeredChanged();
    updateRequiredMargin();
}

void ValueAxis::setVisible(bool visible)
{
    if (m_visible == visible)
        return;
    m_visible = visible;
    emit visibleChanged(visible);
}

/*!
    \qmlproperty enumeration ValueAxis::axisStyle
    TicksAndLabels (default), TicksOnly or LabelsOnly.
*/
void ValueAxis::setAxisStyle(AxisStyle style)
{
    if (m_axisStyle == style)
        return;
    m_axisStyle = style;
    m_ticksDirty = true;
    emit axisStyleChanged();
}

/*!
    \qmlproperty enumeration ValueAxis::rangeOrder
    Increasing (default), or Decreasing: the axis counts backwards over its full range. Plots are not mirrored.
*/
void ValueAxis::setRangeOrder(AxisRangeOrder order)
{
    if (m_rangeOrder == order)
        return;
    m_rangeOrder = order;
    m_ticksDirty = true;
    emit rangeOrderChanged();
}

/*!
    \qmlproperty string ValueAxis::unit
    Shown once, at the end of the labels; empty by default.
*/
void ValueAxis::setUnit(const QString &unit)
{
    if (m_unit == unit)
        return;
    m_unit = unit;
    emit unitChanged();
    updateRequiredMargin();
}

/*!
    \qmlproperty color ValueAxis::verticalUnitLabelColor
    The colour of the unit of a vertical axis; the labels' colour while it is not valid, as by default.
*/
void ValueAxis::setVerticalUnitLabelColor(const QColor &color)
{
    if (m_verticalUnitLabelColor == color)
        return;
    m_verticalUnitLabelColor = color;
    emit verticalUnitLabelColorChanged();
}

/*!
    \qmlproperty list<real> ValueAxis::ticks
    Where FixedTicks stand, in axis units; in the other modes the mantissas from which decimal spacings are chosen:
    1, 1.5, 2, 2.5, 5 and 10 by default. An empty list leaves decimal axes without ticks.
*/
void ValueAxis::setTicks(const QList<qreal> &ticks)
{
    if (m_ticks == ticks)
        return;
    m_ticks = ticks;
    m_ticksDirty = true;
    emit ticksChanged(ticks);
}

/*!
    \qmlproperty BaseFormatter ValueAxis::formatter
    Writes the labels, null by default. A formatter without a parent becomes the axis' own.
*/
void ValueAxis::setFormatter(BaseFormatter *formatter)
{
    if (m_formatter == formatter)
        return;
    m_formatter = formatter;
    if (formatter && !formatter->parent())
        formatter->setParent(this);
    m_labelTexts.clear();
    emit formatterChanged();
    updateRequiredMargin();
}

// Setters that change the ticks and are not announced; the next repaint shows them.

/*!
    \qmlproperty enumeration ValueAxis::tickInterval
    ScaledDecimal (default), ScaledBinary, FixedTicks (at the positions in ticks) or DisplayDynamic, decimal ticks
    whose number follows the length of the axis.
*/
void ValueAxis::setTickInterval(TickInterval interval)
{
    if (m_tickInterval == interval)
        return;
    m_tickInterval = interval;
    m_ticksDirty = true;
}

/*!
    \qmlproperty int ValueAxis::numTicks
    About how many ticks are wanted, 5 by default; DisplayDynamic does without it.
*/
void ValueAxis::setNumTicks(int count)
{
    if (m_numTicks == count)
        return;
    m_numTicks = count;
    m_ticksDirty = true;
}

/*!
    \qmlproperty double ValueAxis::dynamicTicksRatio
    The part of the length of the axis that labels may fill in DisplayDynamic, 0.5 by default.
*/
void ValueAxis::setDynamicTicksRatio(double ratio)
{
    if (m_dynamicTicksRatio == ratio)
        return;
    m_dynamicTicksRatio = ratio;
    m_ticksDirty = true;
}

/*!
    \qmlproperty double ValueAxis::baseline
    The value from which bars and fills start, 0 by default.
*/
void ValueAxis::setBaseline(double baseline)
{
    if (m_baseline == baseline)
        return;
    m_baseline = baseline;
    m_ticksDirty = true;
}

/*!
    \qmlproperty double ValueAxis::customInterval
    A spacing of the ticks in axis units; 0, the default, has one computed, a negative one leaves none.
*/
void ValueAxis::setCustomInterval(double interval)
{
    m_customInterval = interval;
    m_ticksDirty = true;
}

// Setters that are silent altogether.

void ValueAxis::setLabelColor(const QColor &color)
{
    m_labelColor = color;
}

/*!
    \qmlproperty font ValueAxis::labelFont
    The font of labels and unit, Roboto of 16 pixels by default.
*/
void ValueAxis::setLabelFont(const QFont &font)
{
    if (m_labelFont == font)
        return;
    m_labelFont = font;
    updateRequiredMargin();
}

/*!
    \qmlproperty list<string> ValueAxis::tickLabels
    Texts for the entries of ticks, paired by index; values without one are written as numbers.
*/
void ValueAxis::setTickLabels(const QStringList &labels)
{
    m_tickLabels = labels;
    m_labelTexts.clear();
}

/*!
    \qmlproperty XYScale ValueAxis::labelsPlane
    The plane that draws the labels; the view's default plane when none was named.
*/
void ValueAxis::setLabelsPlane(XYScale *plane)
{
    m_labelsPlane = graph::planeItem(plane);
}

void ValueAxis::setLinesPlane(XYScale *plane)
{
    m_linesPlane = graph::planeItem(plane);
}

void ValueAxis::setLineColor(const QColor &color)
{
    m_linePen.setColor(color);
}

void ValueAxis::setLineJoinStyle(Qt::PenJoinStyle style)
{
    m_linePen.setJoinStyle(style);
}

void ValueAxis::setLineDashPattern(const QVector<qreal> &pattern)
{
    m_linePen.setDashPattern(pattern);
}

void ValueAxis::setLineWidth(int width)
{
    m_linePen.setWidth(std::max(0, width));
}

void ValueAxis::setLineStyle(Qt::PenStyle style)
{
    m_linePen.setStyle(style);
}
