#include "view/zoom/ZoomRect.h"

// The mappings to the pixels of the parent item and of the flickable's content. Everything else of the class
// is in ZoomRect.cpp.

double ZoomRect::contentWidth() const
{
    const QQuickItem *item = parentItem();
    return item && width() != 0.0 ? item->width() / width() : 0.0;
}

double ZoomRect::contentHeight() const
{
    const QQuickItem *item = parentItem();
    return item && height() != 0.0 ? item->height() / height() : 0.0;
}

double ZoomRect::contentX() const
{
    return contentWidth() * left();
}

// The content runs downwards from the top of the chart, which is the end of the vertical axis.
double ZoomRect::contentY() const
{
    return (1.0 - bottom()) * contentHeight();
}

/*!
    \qmlmethod double ZoomRect::mapToItemX(double x)
    \qmlmethod double ZoomRect::mapToItemY(double y)
    \qmlmethod point ZoomRect::mapToItem(point point)
    \qmlmethod rect ZoomRect::mapRectToItem(rect rect)
    Fractions of the whole extent as pixels of the parent item, the plot area of a view. Like all mappings 0 without a
    parent item or where its size or the visible part is 0. The vertical item mappings do not flip.

    \qmlmethod double ZoomRect::mapFromItemX(double x)
    \qmlmethod double ZoomRect::mapFromItemY(double y)
    \qmlmethod point ZoomRect::mapFromItem(point point)
    \qmlmethod rect ZoomRect::mapRectFromItem(rect rect)
    The other way round.

    \qmlmethod double ZoomRect::mapToContentX(double x)
    \qmlmethod double ZoomRect::mapToContentY(double y)
    \qmlmethod point ZoomRect::mapToContent(point point)
    \qmlmethod double ZoomRect::mapFromContentX(double x)
    \qmlmethod double ZoomRect::mapFromContentY(double y)
    \qmlmethod point ZoomRect::mapFromContent(point point)
    The same for pixels of a flickable's content, which is the whole extent; the vertical ones flip.
*/
double ZoomRect::mapToItemX(double x) const
{
    const QQuickItem *item = parentItem();
    return item && width() != 0.0 ? (x - left()) * item->width() / width() : 0.0;
}

double ZoomRect::mapFromItemX(double x) const
{
    const QQuickItem *item = parentItem();
    return item && item->width() != 0.0 ? x * width() / item->width() + left() : 0.0;
}

double ZoomRect::mapToContentX(double x) const
{
    return contentWidth() * x;
}

double ZoomRect::mapFromContentX(double x) const
{
    const double span = contentWidth();
    return span != 0.0 ? x / span : 0.0;
}

double ZoomRect::mapToItemY(double y) const
{
    const QQuickItem *item = parentItem();
    return item && height() != 0.0 ? (y - top()) * item->height() / height() : 0.0;
}

double ZoomRect::mapFromItemY(double y) const
{
    const QQuickItem *item = parentItem();
    return item && item->height() != 0.0 ? y * height() / item->height() + top() : 0.0;
}

double ZoomRect::mapToContentY(double y) const
{
    return (1.0 - y) * contentHeight();
}

double ZoomRect::mapFromContentY(double y) const
{
    const double span = contentHeight();
    return span != 0.0 ? 1.0 - y / span : 0.0;
}

QPointF ZoomRect::mapToItem(const QPointF &point) const
{
    return {mapToItemX(point.x()), mapToItemY(point.y())};
}

QPointF ZoomRect::mapFromItem(const QPointF &point) const
{
    return {mapFromItemX(point.x()), mapFromItemY(point.y())};
}

QPointF ZoomRect::mapToContent(const QPointF &point) const
{
    return {mapToContentX(point.x()), mapToContentY(point.y())};
}

QPointF ZoomRect::mapFromContent(const QPointF &point) const
{
    return {mapFromContentX(point.x()), mapFromContentY(point.y())};
}

QRectF ZoomRect::mapRectToItem(const QRectF &rect) const
{
    return {mapToItem(rect.topLeft()), mapToItem(rect.bottomRight())};
}

QRectF ZoomRect::mapRectFromItem(const QRectF &rect) const
{
    return {mapFromItem(rect.topLeft()), mapFromItem(rect.bottomRight())};
}
