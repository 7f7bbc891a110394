#pragma once

#include <QColor>
#include <QPainterPath>
#include <QRect>
#include <QVector>

namespace graph {

// What a trace is drawn on: a painter, or triangles for the scene graph.
class TraceCanvas
{
public:
    virtual ~TraceCanvas() = default;

    // Whether pixels are either painted or not; a smoothing painter, a printer or a vector file gets lines.
    virtual bool takesPixels() const = 0;
    // Rectangles that do not overlap.
    virtual void fill(const QVector<QRect> &rectangles, const QColor &color) = 0;
    // A line of straight pieces; the path is its middle.
    virtual void stroke(const QPainterPath &path, int lineWidth, const QColor &color) = 0;
    // The area between such a line and a row.
    virtual void fillToRow(const QPainterPath &path, double row, const QColor &color) = 0;
    // Only for canvases that take no pixels.
    virtual void fillDots(const QVector<QPointF> &centers, int diameter, const QColor &color) = 0;
};

} // namespace graph
