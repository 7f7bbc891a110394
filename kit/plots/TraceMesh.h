#pragma once

#include "kit/plots/TraceCanvas.h"

namespace graph {

class TriangleNode;

// Draws a trace as triangles of the scene graph, with the pixels that a painter would fill: those whose centres they
// cover.
class TraceMesh : public TraceCanvas
{
public:
    explicit TraceMesh(TriangleNode &node)
        : m_node(node)
    {
    }

    bool takesPixels() const override { return true; }
    void fill(const QVector<QRect> &rectangles, const QColor &color) override;
    void stroke(const QPainterPath &path, int lineWidth, const QColor &color) override;
    void fillToRow(const QPainterPath &path, double row, const QColor &color) override;
    void fillDots(const QVector<QPointF> &centers, int diameter, const QColor &color) override;

private:
    TriangleNode &m_node;
};

} // namespace graph
