#include "view/zoom/ZoomRect.h"

#include "common/FuzzyEqual.h"
#include "common/ObjectCounter.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

// Beyond this the sums of edges could overflow, and infinite edges would never settle.
constexpr double greatestEdge = 1e100;

bool isUsable(double value)
{
    return std::abs(value) <= greatestEdge;
}

// The lower limit wins when the two cross.
double clamped(double value, double lowest, double highest)
{
    return std::max(std::min(value, highest), lowest);
}

// The new lower edge when a span is scaled around center.
double scaledEdge(double edge, double span, double newSpan, double center)
{
    return span == 0.0 ? center - newSpan / 2.0 : center - (center - edge) * newSpan / span;
}

// Connects a signal of an item whose class is not known here; an item without it is left alone.
void follow(QObject *sender, const char *signal, QObject *receiver, const char *method)
{
    // The macros put a digit before the signature.
    if (sender->metaObject()->indexOfSignal(QMetaObject::normalizedSignature(signal + 1)) >= 0)
        QObject::connect(sender, signal, receiver, method, Qt::UniqueConnection);
}

} // namespace

/*!
    \qmltype ZoomRect
    \inqmlmodule graph_plugin
    \brief The visible part of a chart as a rectangle in the unit square that stands for the whole data
    extent.

    A GraphView creates one and gives it to its plots, which give it to their axes. NaN is ignored by every
    operation; values out of range, also infinite ones, are clamped.

    Vertical values grow upwards, like those of an axis: \c top is the smallest visible value, \c bottom the greatest.

    \qmlsignal ZoomRect::rectChanged(rect rect)
    The visible rectangle changed; once for all edges that an operation moves.

    \qmlsignal ZoomRect::contentWidthChanged(double width)
    \qmlsignal ZoomRect::contentHeightChanged(double height)
    \qmlsignal ZoomRect::contentXChanged(double x)
    \qmlsignal ZoomRect::contentYChanged(double y)
    Never emitted.

    \qmlproperty double ZoomRect::x
    \qmlproperty double ZoomRect::y
    Read as left and top, 0 by default; a write pans.
*/
ZoomRect::ZoomRect(QObject *parent)
    : QObject(parent)
{
    static graph::ObjectCounter counter("ZR");
    setObjectName(counter.nextName());
    if (qobject_cast<QQuickItem *>(parent)) {
        connect(parent, SIGNAL(widthChanged()), SLOT(handleParentWidthChanged()));
        connect(parent, SIGNAL(heightChanged()), SLOT(handleParentHeightChanged()));
    }
}

/*!
    \qmlproperty bool ZoomRect::moving
    Whether the bound flickable is being dragged or flicked.
*/
bool ZoomRect::isMoving() const
{
    return m_flickable && m_flickable->property("moving").toBool();
}

QQuickItem *ZoomRect::parentItem() const
{
    return qobject_cast<QQuickItem *>(parent());
}

void ZoomRect::setFlickable(QQuickItem *item)
{
    m_flickable = item;
    m_visibleArea = item ? item->property("visibleArea").value<QObject *>() : nullptr;
    if (item)
        follow(item, SIGNAL(movingChanged()), this, SIGNAL(movingChanged()));
    m_flickableSize = flickableSize();
    m_parentSize = parentSize();
    if (m_visibleArea) {
        follow(m_visibleArea, SIGNAL(xPositionChanged(qreal)), this,
               SLOT(handleVisibleAreaXPositionChanged(double)));
        follow(m_visibleArea, SIGNAL(yPositionChanged(qreal)), this,
               SLOT(handleVisibleAreaYPositionChanged(double)));
    }
}

bool ZoomRect::setChanging(bool changing)
{
    const bool wasChanging = m_changing;
    m_changing = changing;
    if (wasChanging && !changing)
        emitRectChanged();
    return wasChanging;
}

void ZoomRect::emitRectChanged()
{
    const QRectF rect(m_left, m_top, m_width, m_height);
    const bool same = graph::fuzzyEqual(rect.x(), m_lastRect.x()) &&
                      graph::fuzzyEqual(rect.y(), m_lastRect.y()) &&
                      graph::fuzzyEqual(rect.width(), m_lastRect.width()) &&
                      graph::fuzzyEqual(rect.height(), m_lastRect.height());
    if (same)
        return;
    m_lastRect = rect;
    emit rectChanged(rect);
}

void ZoomRect::updateFlickableContentWidth()
{
    m_parentSize.setWidth(parentSize().width());
    m_flickableSize.setWidth(flickableSize().width());
    if (m_flickable)
        m_flickable->setProperty("contentWidth", contentWidth());
}

void ZoomRect::updateFlickableContentHeight()
{
    m_parentSize.setHeight(parentSize().height());
    m_flickableSize.setHeight(flickableSize().height());
    if (m_flickable)
        m_flickable->setProperty("contentHeight", contentHeight());
}

void ZoomRect::updateFlickableContentX()
{
    if (m_flickable && !isFlick())
        m_flickable->setProperty("contentX", contentX());
}

void ZoomRect::updateFlickableContentY()
{
    if (m_flickable && !isFlick())
        m_flickable->setProperty("contentY", contentY());
}

/*!
    \qmlproperty double ZoomRect::width
    The visible fraction of the horizontal extent, 1 by default, at least minWidth. A write keeps the left
    edge.
*/
void ZoomRect::setWidth(double width)
{
    const double v = clamped(width, m_minWidth, m_boundingRect.right() - m_left);
    if (std::isnan(width) || graph::fuzzyEqual(v, m_width))
        return;
    const bool wasChanging = setChanging(true);
    m_width = v;
    setRight(v + m_left);
    emit widthChanged(m_width);
    updateFlickableContentWidth();
    updateFlickableContentX();
    setChanging(wasChanging);
}

/*!
    \qmlproperty double ZoomRect::height
    The visible fraction of the vertical extent, 1 by default, at least minHeight. A write keeps the top edge.
*/
void ZoomRect::setHeight(double height)
{
    const double v = clamped(height, m_minHeight, m_boundingRect.bottom() - m_top);
    if (std::isnan(height) || graph::fuzzyEqual(v, m_height))
        return;
    const bool wasChanging = setChanging(true);
    m_height = v;
    setBottom(v + m_top);
    emit heightChanged(m_height);
    updateFlickableContentHeight();
    updateFlickableContentY();
    setChanging(wasChanging);
}

/*!
    \qmlproperty double ZoomRect::left
    The left edge, 0 by default. A write keeps the right edge; assign \c x to pan.
*/
void ZoomRect::setLeft(double left)
{
    const double v = clamped(left, m_boundingRect.left(), m_right - m_minWidth);
    if (std::isnan(left) || graph::fuzzyEqual(v, m_left))
        return;
    const bool wasChanging = setChanging(true);
    m_left = v;
    setWidth(m_right - m_left);
    emit leftChanged(m_left);
    updateFlickableContentX();
    setChanging(wasChanging);
}

/*!
    \qmlproperty double ZoomRect::right
    The right edge, 1 by default. A write keeps the left edge.
*/
void ZoomRect::setRight(double right)
{
    const double v = clamped(right, m_left + m_minWidth, m_boundingRect.right());
    if (std::isnan(right) || graph::fuzzyEqual(v, m_right))
        return;
    const bool wasChanging = setChanging(true);
    m_right = v;
    setWidth(m_right - m_left);
    emit rightChanged(m_right);
    setChanging(wasChanging);
}

/*!
    \qmlproperty double ZoomRect::top
    The smaller vertical edge, 0 by default. A write pans; the slot setTop() resizes and keeps the other edge.
*/
void ZoomRect::setTop(double top)
{
    const double v = clamped(top, m_boundingRect.top(), m_bottom - m_minHeight);
    if (std::isnan(top) || graph::fuzzyEqual(v, m_top))
        return;
    const bool wasChanging = setChanging(true);
    m_top = v;
    setHeight(m_bottom - m_top);
    emit topChanged(m_top);
    updateFlickableContentY();
    setChanging(wasChanging);
}

/*!
    \qmlproperty double ZoomRect::bottom
    The greater vertical edge, 1 by default. A write pans; the slot setBottom() resizes and keeps the other edge.
*/
void ZoomRect::setBottom(double bottom)
{
    const double v = clamped(bottom, m_top + m_minHeight, m_boundingRect.bottom());
    if (std::isnan(bottom) || graph::fuzzyEqual(v, m_bottom))
        return;
    const bool wasChanging = setChanging(true);
    m_bottom = v;
    setHeight(m_bottom - m_top);
    emit bottomChanged(m_bottom);
    setChanging(wasChanging);
}

/*!
    \qmlproperty rect ZoomRect::boundingRect
    What the visible rectangle must stay inside from its next change on, the unit square by default. Ignored
    unless all of it is finite. Without a notify signal.
*/
void ZoomRect::setBoundingRect(const QRectF &rect)
{
    if (isUsable(rect.x()) && isUsable(rect.y()) && isUsable(rect.width()) && isUsable(rect.height()))
        m_boundingRect = rect;
}

/*!
    \qmlproperty double ZoomRect::minWidth
    The smallest visible fraction, 0.01 by default; wins over the bounds. Negative values are ignored.
*/
void ZoomRect::setMinWidth(double minWidth)
{
    if (minWidth == m_minWidth || !isUsable(minWidth) || minWidth < 0.0)
        return;
    m_minWidth = minWidth;
    emit minWidthChanged(m_minWidth);
}

/*!
    \qmlproperty double ZoomRect::minHeight
    The smallest visible fraction, 0.01 by default; wins over the bounds. Negative values are ignored.
*/
void ZoomRect::setMinHeight(double minHeight)
{
    if (minHeight == m_minHeight || !isUsable(minHeight) || minHeight < 0.0)
        return;
    m_minHeight = minHeight;
    emit minHeightChanged(m_minHeight);
}

/*!
    \qmlproperty flags ZoomRect::zoomAxis
    The directions (Qt.Horizontal, Qt.Vertical) that the zoom and scale methods may change, none by default.
*/
void ZoomRect::setZoomAxis(Qt::Orientations zoomAxis)
{
    if (zoomAxis == m_zoomAxis)
        return;
    m_zoomAxis = zoomAxis;
    emit zoomAxisChanged(m_zoomAxis);
}

/*!
    \qmlmethod ZoomRect::zoomX(double width, double center)
    \qmlmethod ZoomRect::zoomY(double height, double center)
    \qmlmethod ZoomRect::zoom(vector2d scale, point center)
    Make that part of the extent visible; the point \a center, 0 unless given, keeps its place. Only in the directions
    that zoomAxis allows.

    \qmlmethod ZoomRect::scaleX(double width, double center)
    \qmlmethod ZoomRect::scaleY(double height, double center)
    \qmlmethod ZoomRect::scale(vector2d scale, point center)
    The same, but \a center comes to the middle; nothing happens when the size stays the same.
*/
void ZoomRect::zoomX(double width, double center)
{
    const double v = clamped(width, m_minWidth, m_boundingRect.width());
    if (m_zoomAxis.testFlag(Qt::Horizontal) && !std::isnan(width))
        resizeX(v, scaledEdge(m_left, m_width, v, center));
}

void ZoomRect::zoomY(double height, double center)
{
    const double v = clamped(height, m_minHeight, m_boundingRect.height());
    if (m_zoomAxis.testFlag(Qt::Vertical) && !std::isnan(height))
        resizeY(v, scaledEdge(m_top, m_height, v, center));
}

void ZoomRect::zoom(const QVector2D &scale, const QPointF &center)
{
    const bool wasChanging = setChanging(true);
    zoomX(double(scale.x()), center.x());
    zoomY(double(scale.y()), center.y());
    setChanging(wasChanging);
}

void ZoomRect::scaleX(double width, double center)
{
    const double v = clamped(width, m_minWidth, m_boundingRect.width());
    if (m_zoomAxis.testFlag(Qt::Horizontal) && !std::isnan(width))
        resizeX(v, center - 0.5 * v);
}

void ZoomRect::scaleY(double height, double center)
{
    const double v = clamped(height, m_minHeight, m_boundingRect.height());
    if (m_zoomAxis.testFlag(Qt::Vertical) && !std::isnan(height))
        resizeY(v, center - 0.5 * v);
}

void ZoomRect::scale(const QVector2D &scale, const QPointF &center)
{
    const bool wasChanging = setChanging(true);
    scaleX(double(scale.x()), center.x());
    scaleY(double(scale.y()), center.y());
    setChanging(wasChanging);
}

/*!
    \qmlmethod bool ZoomRect::moveLeft(double left)
    \qmlmethod bool ZoomRect::moveRight(double right)
    \qmlmethod bool ZoomRect::moveTop(double top)
    \qmlmethod bool ZoomRect::moveBottom(double bottom)
    \qmlmethod bool ZoomRect::setPosition(point position)
    Pan, as far as the bounds allow, until that edge, or left and top, stand there; tell whether anything moved.
*/
bool ZoomRect::moveLeft(double left)
{
    const double v = clamped(left, m_boundingRect.left(), m_boundingRect.right() - m_width);
    if (std::isnan(left) || graph::fuzzyEqual(v, m_left))
        return false;
    const bool wasChanging = setChanging(true);
    m_left = v;
    m_right = m_width + v;
    emit leftChanged(m_left);
    emit rightChanged(m_right);
    updateFlickableContentX();
    setChanging(wasChanging);
    return true;
}

bool ZoomRect::moveRight(double right)
{
    const double v = clamped(right, m_boundingRect.left() + m_width, m_boundingRect.right());
    if (std::isnan(right) || graph::fuzzyEqual(v, m_right))
        return false;
    const bool wasChanging = setChanging(true);
    m_right = v;
    m_left = v - m_width;
    emit rightChanged(m_right);
    emit leftChanged(m_left);
    updateFlickableContentX();
    setChanging(wasChanging);
    return true;
}

bool ZoomRect::moveTop(double top)
{
    const double v = clamped(top, m_boundingRect.top(), m_boundingRect.bottom() - m_height);
    if (std::isnan(top) || graph::fuzzyEqual(v, m_top))
        return false;
    const bool wasChanging = setChanging(true);
    m_top = v;
    m_bottom = m_height + v;
    emit topChanged(m_top);
    emit bottomChanged(m_bottom);
    updateFlickableContentY();
    setChanging(wasChanging);
    return true;
}

bool ZoomRect::moveBottom(double bottom)
{
    const double v = clamped(bottom, m_boundingRect.top() + m_height, m_boundingRect.bottom());
    if (std::isnan(bottom) || graph::fuzzyEqual(v, m_bottom))
        return false;
    const bool wasChanging = setChanging(true);
    m_bottom = v;
    m_top = v - m_height;
    emit bottomChanged(m_bottom);
    emit topChanged(m_top);
    updateFlickableContentY();
    setChanging(wasChanging);
    return true;
}

bool ZoomRect::setPosition(const QPointF &position)
{
    setChanging(true);
    const bool movedX = moveLeft(position.x());
    const bool movedY = moveTop(position.y());
    setChanging(false);
    return movedX || movedY;
}

/*!
    \qmlmethod ZoomRect::setCenterAndZoom(vector2d scale, point center)
    Shows a part of the size \a scale around \a center, whatever zoomAxis says. Ignored when any of the four
    is NaN.
*/
void ZoomRect::setCenterAndZoom(const QVector2D &scale, const QPointF &center)
{
    if (std::isnan(scale.x()) || std::isnan(scale.y()) || std::isnan(center.x()) || std::isnan(center.y()))
        return;
    setChanging(true);
    const QRectF &bounds = m_boundingRect;
    // The edges are clamped one by one: at the bounds their distance may differ from the width.
    const double w = clamped(double(scale.x()), m_minWidth, bounds.width());
    const double newLeft = clamped(center.x() - w / 2.0, bounds.left(), bounds.right() - w);
    const double newRight = clamped(center.x() + w / 2.0, bounds.left() + w, bounds.right());
    const double h = clamped(double(scale.y()), m_minHeight, bounds.height());
    const double newTop = clamped(center.y() - h / 2.0, bounds.top(), bounds.bottom() - h);
    const double newBottom = clamped(center.y() + h / 2.0, bounds.top() + h, bounds.bottom());
    if (!graph::fuzzyEqual(m_width, w)) {
        m_width = w;
        emit widthChanged(m_width);
        updateFlickableContentWidth();
        updateFlickableContentX();
    }
    if (!graph::fuzzyEqualNearZero(m_left, newLeft)) {
        m_left = newLeft;
        emit leftChanged(m_left);
        updateFlickableContentX();
    }
    if (!graph::fuzzyEqual(m_right, newRight)) {
        m_right = newRight;
        emit rightChanged(m_right);
    }
    if (!graph::fuzzyEqual(m_height, h)) {
        m_height = h;
        emit heightChanged(m_height);
        updateFlickableContentHeight();
        updateFlickableContentY();
    }
    if (!graph::fuzzyEqual(m_bottom, newBottom)) {
        m_bottom = newBottom;
        emit bottomChanged(m_bottom);
        updateFlickableContentY();
    }
    if (!graph::fuzzyEqualNearZero(m_top, newTop)) {
        m_top = newTop;
        emit topChanged(m_top);
        updateFlickableContentY();
    }
    setChanging(false);
}

void ZoomRect::handleParentWidthChanged()
{
    if (isResizedX())
        adoptSizeX();
}

void ZoomRect::handleParentHeightChanged()
{
    if (isResizedY())
        adoptSizeY();
}

void ZoomRect::handleVisibleAreaXPositionChanged(double x)
{
    if (m_changing)
        return;
    if (isResizedX())
        adoptSizeX();
    else if (!std::exchange(m_resizedX, false) || !isRounded("contentX", contentX()))
        moveLeft(x);
}

void ZoomRect::handleVisibleAreaYPositionChanged(double y)
{
    if (m_changing)
        return;
    if (isResizedY())
        adoptSizeY();
    else if (!std::exchange(m_resizedY, false) || !isRounded("contentY", contentY()))
        moveBottom(1.0 - y);
}

// A flickable whose size, or whose content's size, no longer fits its position moves its content by itself.
// That is no flick: the same part of the chart stays visible, and the content moves to where it shows that
// part.
bool ZoomRect::isResizedX() const
{
    return parentSize().width() != m_parentSize.width() || flickableSize().width() != m_flickableSize.width();
}

bool ZoomRect::isResizedY() const
{
    return parentSize().height() != m_parentSize.height() ||
           flickableSize().height() != m_flickableSize.height();
}

void ZoomRect::adoptSizeX()
{
    const bool wasChanging = setChanging(true);
    updateFlickableContentWidth();
    if (m_flickable)
        m_flickable->setProperty("contentX", contentX());
    m_resizedX = true;
    setChanging(wasChanging);
}

void ZoomRect::adoptSizeY()
{
    const bool wasChanging = setChanging(true);
    updateFlickableContentHeight();
    if (m_flickable)
        m_flickable->setProperty("contentY", contentY());
    m_resizedY = true;
    setChanging(wasChanging);
}

// After a resize a flickable puts its content on a whole pixel.
bool ZoomRect::isRounded(const char *property, double position) const
{
    const double found = m_flickable ? m_flickable->property(property).toDouble() : position;
    return found == std::round(found) && std::abs(found - position) < 1.0;
}

QSizeF ZoomRect::parentSize() const
{
    const QQuickItem *item = parentItem();
    return item ? QSizeF(item->width(), item->height()) : QSizeF();
}

QSizeF ZoomRect::flickableSize() const
{
    return m_flickable ? QSizeF(m_flickable->width(), m_flickable->height()) : QSizeF();
}

void ZoomRect::resizeX(double width, double left)
{
    if (std::isnan(left) || graph::fuzzyEqual(width, m_width))
        return;
    const bool wasChanging = setChanging(true);
    const double oldLeft = m_left;
    m_left = clamped(left, m_boundingRect.left(), m_boundingRect.right() - width);
    setWidth(width);
    if (m_left != oldLeft) {
        emit leftChanged(m_left);
        updateFlickableContentX();
    }
    setChanging(wasChanging);
}

void ZoomRect::resizeY(double height, double top)
{
    if (std::isnan(top) || graph::fuzzyEqual(height, m_height))
        return;
    const bool wasChanging = setChanging(true);
    const double oldTop = m_top;
    m_top = clamped(top, m_boundingRect.top(), m_boundingRect.bottom() - height);
    setHeight(height);
    if (m_top != oldTop) {
        emit topChanged(m_top);
        updateFlickableContentY();
    }
    setChanging(wasChanging);
}

// A flickable that is being flicked knows its position; writing it back would stop it.
bool ZoomRect::isFlick() const
{
    return m_visibleArea && sender() == m_visibleArea;
}
