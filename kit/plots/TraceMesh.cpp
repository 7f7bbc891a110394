#include "kit/plots/TraceMesh.h"

#include "raster/StrokeTriangles.h"
#include "view/base/TriangleNode.h"

namespace graph {

void TraceMesh::fill(const QVector<QRect> &rectangles, const QColor &color)
{
    m_node.add(rectangles, color);
}

// Overlaps show where the colour is translucent.
void TraceMesh::stroke(const QPainterPath &path, int lineWidth, const QColor &color)
{
    // Edges of lines of an odd width run through the centres of pixels. A graphics processor counts those at the left edge
    // as covered, the painter those at the right one.
    constexpr double aHair = 1.0 / 64.0;
    std::vector<QPointF> corners;
    addStrokeTriangles(corners, path.translated(aHair, 0.0), lineWidth);
    m_node.add(corners, color);
}

void TraceMesh::fillToRow(const QPainterPath &path, double row, const QColor &color)
{
    std::vector<QPointF> corners;
    for (int i = 1; i < path.elementCount(); ++i) {
        const QPointF begin = path.elementAt(i - 1);
        const QPointF end = path.elementAt(i);
        if (path.elementAt(i).isMoveTo())
            continue;
        const QPointF beginFoot(begin.x(), row);
        const QPointF endFoot(end.x(), row);
        if ((begin.y() < row) == (end.y() < row)) {
            corners.insert(corners.end(), {begin, end, endFoot, endFoot, beginFoot, begin});
            continue;
        }
        const double share = (row - begin.y()) / (end.y() - begin.y());
        const QPointF crossing(begin.x() + share * (end.x() - begin.x()), row);
        corners.insert(corners.end(), {begin, crossing, beginFoot, crossing, end, endFoot});
    }
    m_node.add(corners, color);
}

void TraceMesh::fillDots(const QVector<QPointF> &, int, const QColor &) {}

} // namespace graph
