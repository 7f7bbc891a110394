#include "view/zoom/ZoomRect.h"

#include "common/FuzzyEqual.h"
#include "common/ObjectCounter.h"

#include <cmath>

namespace {

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
    \brief The visible part of a chart as a rectangle in the unit square, which is the whole data
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

void ZoomRect::setFlickable(QQuickItem *item)
{
    m_flickable = item;
    m_visibleArea = item ? item->property("visibleArea").value<QObject *>() : nullptr;
    if (item)
        follow(item, SIGNAL(movingChanged()), this, SIGNAL(movingChanged()));
    m_contentX.setFlickable(item, parentItem());
    m_contentY.setFlickable(item, parentItem());
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
    const QRectF rect(left(), top(), width(), height());
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
    m_contentX.setSize(contentWidth(), parentItem());
}

void ZoomRect::updateFlickableContentHeight()
{
    m_contentY.setSize(contentHeight(), parentItem());
}

void ZoomRect::updateFlickableContentX()
{
    if (!isFlick())
        m_contentX.setPosition(contentX());
}

void ZoomRect::updateFlickableContentY()
{
    if (!isFlick())
        m_contentY.setPosition(contentY());
}

/*!
    \qmlproperty double ZoomRect::width
    The visible fraction of the horizontal extent, 1 by default, at least minWidth. A write keeps the left
    edge.
*/
void ZoomRect::setWidth(double width)
{
    apply(m_x.setExtent(width), {});
}

/*!
    \qmlproperty double ZoomRect::height
    The visible fraction of the vertical extent, 1 by default, at least minHeight. A write keeps the top edge.
*/
void ZoomRect::setHeight(double height)
{
    apply({}, m_y.setExtent(height));
}

/*!
    \qmlproperty double ZoomRect::left
    The left edge, 0 by default. A write keeps the right edge; assign \c x to pan.
*/
void ZoomRect::setLeft(double left)
{
    apply(m_x.setBegin(left), {});
}

/*!
    \qmlproperty double ZoomRect::right
    The right edge, 1 by default. A write keeps the left edge.
*/
void ZoomRect::setRight(double right)
{
    apply(m_x.setEnd(right), {});
}

/*!
    \qmlproperty double ZoomRect::top
    The smaller vertical edge, 0 by default. A write pans; the slot setTop() resizes and keeps the other edge.
*/
void ZoomRect::setTop(double top)
{
    apply({}, m_y.setBegin(top));
}

/*!
    \qmlproperty double ZoomRect::bottom
    The greater vertical edge, 1 by default. A write pans; the slot setBottom() resizes and keeps the other edge.
*/
void ZoomRect::setBottom(double bottom)
{
    apply({}, m_y.setEnd(bottom));
}

/*!
    \qmlproperty rect ZoomRect::boundingRect
    What the visible rectangle must stay inside from its next change on, the unit square by default. Ignored
    unless all of it is finite. Without a notify signal.
*/
void ZoomRect::setBoundingRect(const QRectF &rect)
{
    if (!graph::ZoomInterval::canBeBounds(rect.x(), rect.width()) ||
        !graph::ZoomInterval::canBeBounds(rect.y(), rect.height()))
        return;
    m_x.setBounds(rect.x(), rect.width());
    m_y.setBounds(rect.y(), rect.height());
}

/*!
    \qmlproperty double ZoomRect::minWidth
    \qmlproperty double ZoomRect::minHeight
    The smallest visible fraction, 0.01 by default; wins over the bounds. Negative values are ignored. Of an hour, 36 s
    are the least that shows; write a smaller fraction for long data.
*/
void ZoomRect::setMinWidth(double minWidth)
{
    if (m_x.setLeastExtent(minWidth))
        emit minWidthChanged(minWidth);
}

void ZoomRect::setMinHeight(double minHeight)
{
    if (m_y.setLeastExtent(minHeight))
        emit minHeightChanged(minHeight);
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
    if (m_zoomAxis.testFlag(Qt::Horizontal))
        apply(m_x.zoom(width, center), {});
}

void ZoomRect::zoomY(double height, double center)
{
    if (m_zoomAxis.testFlag(Qt::Vertical))
        apply({}, m_y.zoom(height, center));
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
    if (m_zoomAxis.testFlag(Qt::Horizontal))
        apply(m_x.scale(width, center), {});
}

void ZoomRect::scaleY(double height, double center)
{
    if (m_zoomAxis.testFlag(Qt::Vertical))
        apply({}, m_y.scale(height, center));
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
    Pan, as far as the bounds allow, until that edge, or left and top, is there; tell whether anything moved.
*/
bool ZoomRect::moveLeft(double left)
{
    const auto changes = m_x.moveBegin(left);
    apply(changes, {});
    return !changes.isEmpty();
}

bool ZoomRect::moveRight(double right)
{
    const auto changes = m_x.moveEnd(right);
    apply(changes, {});
    return !changes.isEmpty();
}

bool ZoomRect::moveTop(double top)
{
    const auto changes = m_y.moveBegin(top);
    apply({}, changes);
    return !changes.isEmpty();
}

bool ZoomRect::moveBottom(double bottom)
{
    const auto changes = m_y.moveEnd(bottom);
    apply({}, changes);
    return !changes.isEmpty();
}

bool ZoomRect::setPosition(const QPointF &position)
{
    setChanging(true);
    const auto x = m_x.moveBegin(position.x());
    const auto y = m_y.moveBegin(position.y());
    apply(x, y);
    setChanging(false);
    return !x.isEmpty() || !y.isEmpty();
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
    using graph::ZoomInterval;
    setChanging(true);
    apply(m_x.show(double(scale.x()), center.x(), ZoomInterval::Begin),
          m_y.show(double(scale.y()), center.y(), ZoomInterval::End));
    setChanging(false);
}

void ZoomRect::show(const QRectF &rect)
{
    apply(m_x.showFrom(rect.x(), rect.width()), m_y.showFrom(rect.y(), rect.height()));
}

// Announces what an operation changed and updates the flickable.
void ZoomRect::apply(const graph::ZoomInterval::Changes &x, const graph::ZoomInterval::Changes &y)
{
    using graph::ZoomInterval;
    using Signal = void (ZoomRect::*)(double);
    static constexpr Signal signalsX[] = {&ZoomRect::widthChanged, &ZoomRect::leftChanged,
                                          &ZoomRect::rightChanged};
    static constexpr Signal signalsY[] = {&ZoomRect::heightChanged, &ZoomRect::topChanged,
                                          &ZoomRect::bottomChanged};
    const bool wasChanging = setChanging(true);
    for (const ZoomInterval::Part part : x)
        emit(this->*signalsX[part])(m_x.value(part));
    for (const ZoomInterval::Part part : y)
        emit(this->*signalsY[part])(m_y.value(part));
    if (x.contains(ZoomInterval::Extent))
        updateFlickableContentWidth();
    if (!x.isEmpty())
        updateFlickableContentX();
    if (y.contains(ZoomInterval::Extent))
        updateFlickableContentHeight();
    if (!y.isEmpty())
        updateFlickableContentY();
    setChanging(wasChanging);
}

void ZoomRect::handleParentWidthChanged()
{
    if (!m_contentX.isOutdated(parentItem()))
        return;
    const bool wasChanging = setChanging(true);
    m_contentX.refit(contentWidth(), contentX(), parentItem());
    setChanging(wasChanging);
}

void ZoomRect::handleParentHeightChanged()
{
    if (!m_contentY.isOutdated(parentItem()))
        return;
    const bool wasChanging = setChanging(true);
    m_contentY.refit(contentHeight(), contentY(), parentItem());
    setChanging(wasChanging);
}

// A flickable whose size, or whose content's size, no longer fits its position moves its content by itself,
// to a whole pixel. That is no flick: the same part of the chart stays visible, and the content goes to where
// it shows it.
void ZoomRect::handleVisibleAreaXPositionChanged(double x)
{
    if (m_changing)
        return;
    if (m_contentX.isOutdated(parentItem()))
        handleParentWidthChanged();
    else
        moveLeft(x);
}

void ZoomRect::handleVisibleAreaYPositionChanged(double y)
{
    if (m_changing)
        return;
    if (m_contentY.isOutdated(parentItem()))
        handleParentHeightChanged();
    else
        moveBottom(1.0 - y);
}
