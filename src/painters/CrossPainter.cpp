#include "painters/CrossPainter.h"

#include "common/SafeInteger.h"
#include "raster/PixelCentres.h"

#include <QPainter>

/*!
    \qmltype CrossPainter
    \inherits BasePainter
    \brief An upright cross at a data point. Not drawn at all when the point lies outside the visible range.
*/
CrossPainter::CrossPainter(QQuickItem *parent)
    : BasePainter(parent)
{
    connect(this, SIGNAL(point1XChanged()), this, SIGNAL(updateNeeded()));
    connect(this, SIGNAL(point1YChanged()), this, SIGNAL(updateNeeded()));
    connect(this, SIGNAL(crossColorChanged()), this, SIGNAL(updateNeeded()));
    connect(this, SIGNAL(lineWidthChanged()), this, SIGNAL(updateNeeded()));
    connect(this, SIGNAL(crossSizeChanged()), this, SIGNAL(updateNeeded()));
}

// The pen stays set: the next painter sets its own, and saving the state would cost more than the two lines.
void CrossPainter::paint(QPainter *painter, const QRectF &visibleRect, float scaleX, float scaleY)
{
    const double top = visibleRect.y() + visibleRect.height();
    const bool visible = m_point1X >= visibleRect.x() && m_point1X <= visibleRect.x() + visibleRect.width() &&
                         m_point1Y >= visibleRect.y() && m_point1Y <= top;
    if (!visible)
        return;
    const graph::PixelMapping place = mapping(visibleRect, scaleX, scaleY);
    const double x = place.x(m_point1X);
    const double y = place.y(m_point1Y);
    const int half = m_crossSize / 2;

    QPen pen;
    pen.setCapStyle(Qt::RoundCap);
    pen.setColor(m_crossColor);
    pen.setWidth(graph::penWidth(m_lineWidth));
    painter->setPen(pen);
    const graph::PixelCentres centred(painter);
    painter->drawLine(graph::pixel(x - half), graph::pixel(y), graph::pixel(x + half), graph::pixel(y));
    painter->drawLine(graph::pixel(x), graph::pixel(y - half), graph::pixel(x), graph::pixel(y + half));
}

/*!
    \qmlproperty double CrossPainter::point1X
    Position in units of the horizontal axis, 0 by default.
*/
void CrossPainter::setPoint1X(double x)
{
    if (m_point1X == x)
        return;
    m_point1X = x;
    emit point1XChanged();
}

/*!
    \qmlproperty double CrossPainter::point1Y
    Position in units of the vertical axis, 0 by default.
*/
void CrossPainter::setPoint1Y(double y)
{
    if (m_point1Y == y)
        return;
    m_point1Y = y;
    emit point1YChanged();
}

/*!
    \qmlproperty color CrossPainter::crossColor
    Colour of the cross, black by default.
*/
void CrossPainter::setCrossColor(const QColor &color)
{
    if (m_crossColor == color)
        return;
    m_crossColor = color;
    emit crossColorChanged();
}

/*!
    \qmlproperty int CrossPainter::lineWidth
    Width of the lines in pixels, 1 by default.
*/
void CrossPainter::setLineWidth(int width)
{
    if (m_lineWidth == width)
        return;
    m_lineWidth = width;
    emit lineWidthChanged();
}

/*!
    \qmlproperty int CrossPainter::crossSize
    Length of the lines in pixels, 2 by default; an odd size counts as the even one below it.
*/
void CrossPainter::setCrossSize(int size)
{
    if (m_crossSize == size)
        return;
    m_crossSize = size;
    emit crossSizeChanged();
}
