#pragma once

#include "common/Export.h"
#include "kit/plots/TraceCanvas.h"

#include <vector>

namespace graph {

// The triangles of a trace, with the pixels that a painter would fill: those whose centres they cover.
class GRAPH_CHARTS_EXPORT TraceMesh : public TraceCanvas
{
public:
    struct Vertex
    {
        float x;
        float y;
        unsigned char red; // multiplied with alpha
        unsigned char green;
        unsigned char blue;
        unsigned char alpha;
    };

    // Three vertices each.
    const std::vector<Vertex> &triangles() const { return m_triangles; }

    bool takesPixels() const override { return true; }
    void fill(const QVector<QRect> &rectangles, const QColor &color) override;
    void stroke(const QPainterPath &path, int lineWidth, const QColor &color) override;
    void fillToRow(const QPainterPath &path, double row, const QColor &color) override;
    void fillDots(const QVector<QPointF> &centers, int diameter, const QColor &color) override;

private:
    void setColor(const QColor &color);
    void add(const QPointF &corner);
    void add(const QPointF &a, const QPointF &b, const QPointF &c);
    void add(const QPointF &a, const QPointF &b, const QPointF &c, const QPointF &d);

    std::vector<Vertex> m_triangles;
    Vertex m_color{};
};

} // namespace graph
