#include "kit/plots/PainterCanvas.h"

#include "common/VectorRegisters.h"
#include "raster/PixelFill.h"
#include "raster/Strokes.h"

#include <QPainter>
#include <QPen>

namespace graph {

PainterCanvas::PainterCanvas(QPainter *painter)
    : m_painter(painter)
    , m_takesPixels(isOnPixels(*painter))
{
}

void PainterCanvas::fill(const QVector<QRect> &rectangles, const QColor &color)
{
    m_painter->setPen(Qt::NoPen);
    m_painter->setBrush(color);
    m_painter->drawRects(rectangles);
    m_painter->setBrush(Qt::NoBrush);
    clearWideRegisters();
}

void PainterCanvas::stroke(const QPainterPath &path, int lineWidth, const QColor &color)
{
    QPen pen(color, lineWidth);
    pen.setCapStyle(Qt::FlatCap);
    pen.setJoinStyle(m_takesPixels ? Qt::BevelJoin : Qt::RoundJoin);
    m_painter->setPen(pen);
    // Half of an even width is a whole number: on pixels such a line lies between two of them, not on one.
    const bool isBetween = !m_takesPixels && lineWidth % 2 == 0;
    drawLinePath(m_painter, isBetween ? path.translated(-0.5, -0.5) : path);
}

void PainterCanvas::fillToRow(const QPainterPath &path, double row, const QColor &color)
{
    graph::fillToRow(m_painter, path, row, QBrush(color));
}

void PainterCanvas::fillDots(const QVector<QPointF> &centers, int diameter, const QColor &color)
{
    m_painter->setPen(Qt::NoPen);
    m_painter->setBrush(color);
    for (const QPointF &center : centers)
        m_painter->drawEllipse(center, diameter / 2.0, diameter / 2.0);
    m_painter->setBrush(Qt::NoBrush);
}

} // namespace graph
