#include "kit/plots/TraceMesh.h"

#include "raster/StrokeTriangles.h"

namespace graph {

void TraceMesh::setColor(const QColor &color)
{
    const QRgb value = qPremultiply(color.rgba());
    m_color.red = static_cast<unsigned char>(qRed(value));
    m_color.green = static_cast<unsigned char>(qGreen(value));
    m_color.blue = static_cast<unsigned char>(qBlue(value));
    m_color.alpha = static_cast<unsigned char>(qAlpha(value));
}

void TraceMesh::add(const QPointF &corner)
{
    m_color.x = float(corner.x());
    m_color.y = float(corner.y());
    m_triangles.push_back(m_color);
}

void TraceMesh::add(const QPointF &a, const QPointF &b, const QPointF &c)
{
    for (const QPointF *corner : {&a, &b, &c})
        add(*corner);
}

// Corners in their order around the shape.
void TraceMesh::add(const QPointF &a, const QPointF &b, const QPointF &c, const QPointF &d)
{
    add(a, b, c);
    add(c, d, a);
}

void TraceMesh::fill(const QVector<QRect> &rectangles, const QColor &color)
{
    setColor(color);
    m_triangles.reserve(m_triangles.size() + std::size_t(rectangles.size()) * 6);
    for (const QRect &rect : rectangles) {
        const double right = rect.x() + rect.width();
        const double bottom = rect.y() + rect.height();
        add(QPointF(rect.x(), rect.y()), QPointF(right, rect.y()), QPointF(right, bottom),
            QPointF(rect.x(), bottom));
    }
}

// Overlaps show where the colour is translucent.
void TraceMesh::stroke(const QPainterPath &path, int lineWidth, const QColor &color)
{
    setColor(color);
    std::vector<QPointF> corners;
    addStrokeTriangles(corners, path, lineWidth);
    for (const QPointF &corner : corners)
        add(corner);
}

void TraceMesh::fillToRow(const QPainterPath &path, double row, const QColor &color)
{
    setColor(color);
    for (int i = 1; i < path.elementCount(); ++i) {
        const QPointF begin = path.elementAt(i - 1);
        const QPointF end = path.elementAt(i);
        if (path.elementAt(i).isMoveTo())
            continue;
        const QPointF beginFoot(begin.x(), row);
        const QPointF endFoot(end.x(), row);
        if ((begin.y() < row) == (end.y() < row)) {
            add(begin, end, endFoot, beginFoot);
            continue;
        }
        const double share = (row - begin.y()) / (end.y() - begin.y());
        const QPointF crossing(begin.x() + share * (end.x() - begin.x()), row);
        add(begin, crossing, beginFoot);
        add(crossing, end, endFoot);
    }
}

void TraceMesh::fillDots(const QVector<QPointF> &, int, const QColor &) {}

} // namespace graph
