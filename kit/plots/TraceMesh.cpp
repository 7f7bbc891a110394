#include "kit/plots/TraceMesh.h"

#include <cmath>

namespace graph {

void TraceMesh::setColor(const QColor &color)
{
    const QRgb value = qPremultiply(color.rgba());
    m_color.red = static_cast<unsigned char>(qRed(value));
    m_color.green = static_cast<unsigned char>(qGreen(value));
    m_color.blue = static_cast<unsigned char>(qBlue(value));
    m_color.alpha = static_cast<unsigned char>(qAlpha(value));
}

void TraceMesh::add(const QPointF &a, const QPointF &b, const QPointF &c)
{
    for (const QPointF *point : {&a, &b, &c}) {
        m_color.x = float(point->x());
        m_color.y = float(point->y());
        m_triangles.push_back(m_color);
    }
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

// A strip for each line, and a triangle in the wedge that two leave at the outer side of their joint. They
// overlap at the inner side, which shows where the colour is translucent.
void TraceMesh::stroke(const QPainterPath &path, int lineWidth, const QColor &color)
{
    setColor(color);
    QPointF formerSide;
    for (int i = 1; i < path.elementCount(); ++i) {
        const QPointF begin = path.elementAt(i - 1);
        const QPointF end = path.elementAt(i);
        const double length = std::hypot(end.x() - begin.x(), end.y() - begin.y());
        if (path.elementAt(i).isMoveTo() || length == 0.0)
            continue;
        const QPointF side = QPointF(begin.y() - end.y(), end.x() - begin.x()) * (lineWidth / 2.0 / length);
        add(begin + side, end + side, end - side, begin - side);
        if (!path.elementAt(i - 1).isMoveTo()) {
            add(begin, begin + formerSide, begin + side);
            add(begin, begin - formerSide, begin - side);
        }
        formerSide = side;
    }
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
