#include "plots/GraphPointShapes.h"

#include "raster/PixelCentres.h"

#include <QPainter>

/*!
    \qmltype GraphPointDot
    \inherits GraphPoint
    \brief A short diagonal stroke, a round dot when the line is wide.
*/
void GraphPointDot::paint(QPainter *painter, int x, int y)
{
    painter->setPen(roundPen());
    const graph::PixelCentres centred(painter);
    painter->drawLine(x, y, x + size(), y + size());
}

/*!
    \qmltype GraphPointCircle
    \inherits GraphPoint
    \brief A circle of radius \c pointSize.
*/
void GraphPointCircle::paint(QPainter *painter, int x, int y)
{
    painter->setPen(roundPen());
    const graph::PixelCentres centred(painter);
    painter->drawEllipse(x - size(), y - size(), 2 * size(), 2 * size());
}

/*!
    \qmltype GraphPointCross
    \inherits GraphPoint
    \brief An upright cross of \c pointSize.
*/
void GraphPointCross::paint(QPainter *painter, int x, int y)
{
    painter->setPen(roundPen());
    drawHorizontalLine(painter, x, y);
    drawVerticalLine(painter, x, y);
}

/*!
    \qmltype GraphPointHorizontalLine
    \inherits GraphPoint
    \brief A horizontal line of length \c pointSize.
*/
void GraphPointHorizontalLine::paint(QPainter *painter, int x, int y)
{
    painter->setPen(roundPen());
    drawHorizontalLine(painter, x, y);
}

/*!
    \qmltype GraphPointVerticalLine
    \inherits GraphPoint
    \brief A vertical line of length \c pointSize.
*/
void GraphPointVerticalLine::paint(QPainter *painter, int x, int y)
{
    painter->setPen(roundPen());
    drawVerticalLine(painter, x, y);
}
