#include "axis/ValueAxis.h"

#include <QTimerEvent>

#include <algorithm>

// The full and the visible range of the axis, and how the two follow the zoom rectangle. The ticks and their
// texts are in ValueAxisTicks.cpp, the rest of how it looks in ValueAxisLook.cpp.

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
    The axis looks different: properties with a notify signal changed, apart from the visible range. Comes
    once for all changes within one pass of the event loop.

    \qmlmethod void ValueAxis::setLowerBound(double bound)
    \qmlmethod void ValueAxis::setUpperBound(double bound)
    Put an edge of the visible range to a fraction of the full range, 0 to 1, as the zoom rectangle does; not
    while scalable is false.

    \qmlmethod void ValueAxis::handleRectChanged()
    \qmlmethod void ValueAxis::handleMovingChanged()
    \internal
    Answers to the zoom rectangle.
*/
ValueAxis::ValueAxis(QObject *parent)
    : QObject(parent)
{
    m_look.labelFont = QFont(QStringLiteral("Roboto"));
    m_look.labelFont.setPixelSize(16);
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
    if (orientation() == Qt::Horizontal) {
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
    if (m_range.hasSpan()) {
        pushVisibleRange();
        return;
    }
    setLowerBound(m_range.lowerBound());
    setUpperBound(m_range.upperBound());
    emit visibleRangeChanged();
}

void ValueAxis::forgetTexts()
{
    m_texts.forgetTexts();
}

void ValueAxis::setScaleKind(graph::ScaleKind kind)
{
    if (kind == m_range.scaleKind())
        return;
    m_range.setScaleKind(kind);
    m_ticks.setDirty(true);
    handleValueRangeChanged();
    // Places have changed where the visible edges have not.
    emit minVisibleChanged(minVisible());
    emit maxVisibleChanged(maxVisible());
    emit valueRangeChanged();
    emitAxisChanged();
}

// Writes the visible edges again after a change of the full range, which moves them in the zoom rectangle.
void ValueAxis::pushVisibleRange()
{
    graph::AxisRange::Edges edges{minVisible(), maxVisible()};
    if (m_zoomRect) {
        // Between writes of both ends the range may be the wrong way round; the second write has room again.
        if (!(valueRange() > 0.0))
            return;
        edges = m_range.visibleInside();
        // The rectangle stops an edge short of the other one, which then has to move away first.
        const bool horizontal = orientation() == Qt::Horizontal;
        const double farEdge = horizontal ? m_zoomRect->right() - m_zoomRect->minWidth()
                                          : m_zoomRect->bottom() - m_zoomRect->minHeight();
        if (m_range.fullScale().fraction(edges.lowest) > farEdge)
            setMaxVisible(edges.highest);
    }
    setMinVisible(edges.lowest);
    setMaxVisible(edges.highest);
}

/*!
    \qmlproperty double ValueAxis::minValue
    The begin of the full range, 0 by default. While the chart is being flicked the write waits for the end.
*/
void ValueAxis::setMinValue(double minValue)
{
    m_range.requestMinValue(minValue);
    if (minValue == m_range.minValue() || isRangeHeld())
        return;
    const bool spanMoved = m_range.moveMinValue(minValue);
    m_ticks.setDirty(true);
    handleValueRangeChanged();
    emit minValueChanged(m_range.minValue());
    if (spanMoved) {
        emit minVisibleChanged(minVisible());
        emit maxVisibleChanged(maxVisible());
    }
    emit valueRangeChanged();
}

/*!
    \qmlproperty double ValueAxis::maxValue
    The end of the full range, 1 by default. While the chart is being flicked the write waits for the end.
*/
void ValueAxis::setMaxValue(double maxValue)
{
    m_range.requestMaxValue(maxValue);
    if (maxValue == m_range.maxValue() || isRangeHeld())
        return;
    const bool spanMoved = m_range.moveMaxValue(maxValue);
    m_ticks.setDirty(true);
    handleValueRangeChanged();
    emit maxValueChanged(m_range.maxValue());
    if (spanMoved) {
        emit minVisibleChanged(minVisible());
        emit maxVisibleChanged(maxVisible());
    }
    emit valueRangeChanged();
}

/*!
    \qmlproperty double ValueAxis::minVisible
    The begin of the visible range, 0 by default. On a zoomed chart a write goes through the zoom rectangle,
    which clamps it against the other edge: write the farther edge first.
*/
void ValueAxis::setMinVisible(double minVisible)
{
    if (!m_zoomRect) {
        m_range.setMinVisible(minVisible);
        m_ticks.setDirty(true);
        emit minVisibleChanged(minVisible);
        return;
    }
    if (valueRange() == 0.0)
        return;
    const double fraction = m_range.fullScale().fraction(minVisible);
    if (orientation() == Qt::Horizontal)
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
        m_range.setMaxVisible(maxVisible);
        m_ticks.setDirty(true);
        emit maxVisibleChanged(maxVisible);
        return;
    }
    if (valueRange() == 0.0)
        return;
    const double fraction = m_range.fullScale().fraction(maxVisible);
    if (orientation() == Qt::Horizontal)
        m_zoomRect->setRight(fraction);
    else
        m_zoomRect->setBottom(fraction);
}

/*!
    \qmlproperty double ValueAxis::visibleRange
    The width of the visible span in axis units; 0, the default, leaves it free. A span that is set keeps its
    width when minValue or maxValue change, as far as the full range has room for it.
*/
void ValueAxis::setVisibleRange(double visibleRange)
{
    if (visibleRange == m_range.span())
        return;
    m_range.setSpan(visibleRange);
    if (m_range.hasSpan()) {
        setMaxVisible(std::min(minVisible() + m_range.span(), maxValue()));
        setMinVisible(std::max(maxVisible() - m_range.span(), minValue()));
    }
    emit visibleRangeChanged();
}

/*!
    \qmlproperty bool ValueAxis::scalable
    Whether the visible range follows the zoom rectangle, true by default; else the full range is visible.
*/
void ValueAxis::setScalable(bool scalable)
{
    if (scalable == m_range.isScalable())
        return;
    m_range.setScalable(scalable);
    setLowerBound(m_range.lowerBound());
    setUpperBound(m_range.upperBound());
    emit scalableChanged();
}

void ValueAxis::setLowerBound(double bound)
{
    if (!m_range.setLowerBound(bound))
        return;
    m_ticks.setDirty(true);
    m_rectChangePending = true;
    emit minVisibleChanged(minVisible());
}

void ValueAxis::setUpperBound(double bound)
{
    if (!m_range.setUpperBound(bound))
        return;
    m_ticks.setDirty(true);
    m_rectChangePending = true;
    emit maxVisibleChanged(maxVisible());
}

void ValueAxis::handleRectChanged()
{
    if (!m_rectChangePending)
        return;
    m_rectChangePending = false;
    emit visibleRangeChanged();
}

bool ValueAxis::isRangeHeld() const
{
    return m_zoomRect && m_zoomRect->isMoving() && !m_fitsWhileMoved;
}

void ValueAxis::handleMovingChanged()
{
    if (!m_zoomRect || m_zoomRect->isMoving())
        return;
    setMinValue(m_range.requestedMinValue());
    setMaxValue(m_range.requestedMaxValue());
}

/*!
    \qmlmethod void ValueAxis::emitAxisChanged()
    Draws the axis again, for example after its formatter has changed how it formats.
*/
void ValueAxis::emitAxisChanged()
{
    m_texts.clear();
    // A pending one is kept: started again by a producer in a 0 ms timer it would never come.
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
