#include "plots/GraphPoint.h"

#include "common/SafeInteger.h"
#include "raster/PixelCentres.h"

#include <QPainter>

/*!
    \qmltype GraphPoint
    \brief What a scatter plot draws at each of its points.

    Not an item: give one of its kinds to \c GraphPlot.graphPoint. Colour and line width come from the plot.

    \qmlsignal GraphPoint::pointChanged()
    The point looks different now; follows the signal of the property that changed. The plot repaints.
*/
GraphPoint::GraphPoint(QObject *parent)
    : QObject(parent)
{
}

/*!
    \qmlproperty int GraphPoint::pointSize
    Size of the shape in pixels, 5 by default.
*/
void GraphPoint::setPointSize(int size)
{
    if (m_pointSize == size)
        return;
    m_pointSize = size;
    emit pointSizeChanged(size);
    emit pointChanged();
}

/*!
    \qmlproperty bool GraphPoint::isSelected
    Whether the point drawn last is the plot's selected one; false by default. The plot writes it for each
    point. The slot is setSelected(), the signal selectedChanged().

    \qmlmethod void GraphPoint::setSelected(bool selected)
    Writes isSelected.

    \qmlsignal GraphPoint::selectedChanged(bool isSelected)
    Tells a change of isSelected that a document made; those that the plot makes while it paints are silent.
*/
void GraphPoint::setSelected(bool selected)
{
    if (m_isSelected == selected)
        return;
    m_isSelected = selected;
    emit selectedChanged(selected);
    emit pointChanged();
}

void GraphPoint::setPenColor(const QColor &color)
{
    if (m_penColor != color)
        m_penColor = color;
}

void GraphPoint::setMargins(int top, int right, int bottom, int left)
{
    if (top != -1)
        m_marginTop = top;
    if (right != -1)
        m_marginRight = right;
    if (bottom != -1)
        m_marginBottom = bottom;
    if (left != -1)
        m_marginLeft = left;
}

QPen GraphPoint::roundPen() const
{
    QPen pen(m_penColor);
    pen.setWidth(lineWidth());
    pen.setCapStyle(Qt::RoundCap);
    return pen;
}

int GraphPoint::lineWidth() const
{
    return graph::penWidth(m_lineWidth);
}

int GraphPoint::size() const
{
    return graph::pixel(m_pointSize);
}

int GraphPoint::marginLeft() const
{
    return graph::pixel(m_marginLeft);
}

int GraphPoint::marginRight() const
{
    return graph::pixel(m_marginRight);
}

int GraphPoint::marginTop() const
{
    return graph::pixel(m_marginTop);
}

int GraphPoint::marginBottom() const
{
    return graph::pixel(m_marginBottom);
}

void GraphPoint::drawHorizontalLine(QPainter *painter, int x, int y) const
{
    const graph::PixelCentres centred(painter);
    painter->drawLine(x - size() / 2, y, x + size() / 2, y);
}

void GraphPoint::drawVerticalLine(QPainter *painter, int x, int y) const
{
    const graph::PixelCentres centred(painter);
    painter->drawLine(x, y - size() / 2, x, y + size() / 2);
}
