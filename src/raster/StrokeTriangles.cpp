#include "raster/StrokeTriangles.h"

#include <QPainterPath>

#include <cmath>

namespace graph {

// A strip for each line, and a triangle in the wedge that two leave at the outer side of their joint.
void addStrokeTriangles(std::vector<QPointF> &corners, const QPainterPath &path, double width)
{
    const auto add = [&corners](const QPointF &a, const QPointF &b, const QPointF &c) {
        corners.insert(corners.end(), {a, b, c});
    };
    QPointF formerSide;
    for (int i = 0; i < path.elementCount(); ++i) {
        if (path.elementAt(i).isMoveTo()) {
            formerSide = QPointF();
            continue;
        }
        const QPointF begin = path.elementAt(i - 1);
        const QPointF end = path.elementAt(i);
        const double length = std::hypot(end.x() - begin.x(), end.y() - begin.y());
        if (length == 0.0)
            continue;
        const QPointF side = QPointF(begin.y() - end.y(), end.x() - begin.x()) * (width / 2.0 / length);
        add(begin + side, end + side, end - side);
        add(end - side, begin - side, begin + side);
        if (!formerSide.isNull()) {
            add(begin, begin + formerSide, begin + side);
            add(begin, begin - formerSide, begin - side);
        }
        formerSide = side;
    }
}

} // namespace graph
