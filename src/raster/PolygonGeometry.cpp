#include "raster/PolygonGeometry.h"

#include <algorithm>
#include <cmath>

namespace graph {

namespace {

bool isFinite(const QPointF &point)
{
    return std::isfinite(point.x()) && std::isfinite(point.y());
}

// Narrows the stretch from..to of a line, in fractions of it, to where distance + fraction * slope >= 0.
bool narrow(double distance, double slope, double &from, double &to)
{
    if (slope == 0.0)
        return distance >= 0.0;
    const double crossing = -distance / slope;
    if (slope > 0.0)
        from = std::max(from, crossing);
    else
        to = std::min(to, crossing);
    return from <= to;
}

// Keeps what lies on the side of a border where side(point) >= 0.
template <typename Side> QPolygonF clippedAtBorder(const QPolygonF &polygon, Side side)
{
    QPolygonF result;
    result.reserve(polygon.size() + 4);
    for (int i = 0; i < polygon.size(); ++i) {
        const QPointF &from = polygon[i > 0 ? i - 1 : polygon.size() - 1];
        const QPointF &to = polygon[i];
        const double before = side(from);
        const double after = side(to);
        if ((before < 0.0) != (after < 0.0))
            result.append(from + (to - from) * (before / (before - after)));
        if (after >= 0.0)
            result.append(to);
    }
    return result;
}

} // namespace

bool clipLine(QPointF &begin, QPointF &end, const QRectF &rect)
{
    const QPointF extent = end - begin;
    double from = 0.0;
    double to = 1.0;
    if (!isFinite(begin) || !isFinite(extent) || !narrow(begin.x() - rect.left(), extent.x(), from, to) ||
        !narrow(rect.right() - begin.x(), -extent.x(), from, to) ||
        !narrow(begin.y() - rect.top(), extent.y(), from, to) ||
        !narrow(rect.bottom() - begin.y(), -extent.y(), from, to))
        return false;
    // An end that is inside stays exactly where it is.
    const QPointF start = begin;
    if (from > 0.0)
        begin = start + extent * from;
    if (to < 1.0)
        end = start + extent * to;
    return true;
}

QPolygonF clippedPolygon(const QPolygonF &polygon, const QRectF &rect)
{
    const QPolygonF left = clippedAtBorder(polygon, [&](const QPointF &p) { return p.x() - rect.left(); });
    const QPolygonF right = clippedAtBorder(left, [&](const QPointF &p) { return rect.right() - p.x(); });
    const QPolygonF top = clippedAtBorder(right, [&](const QPointF &p) { return p.y() - rect.top(); });
    return clippedAtBorder(top, [&](const QPointF &p) { return rect.bottom() - p.y(); });
}

bool containsOddEven(const QVector<QPolygonF> &polygons, const QPointF &point)
{
    bool inside = false;
    for (const QPolygonF &polygon : polygons) {
        for (int i = 0; i < polygon.size(); ++i) {
            const QPointF &a = polygon[i > 0 ? i - 1 : polygon.size() - 1];
            const QPointF &b = polygon[i];
            if ((a.y() > point.y()) == (b.y() > point.y()))
                continue;
            const double crossing = a.x() + (point.y() - a.y()) / (b.y() - a.y()) * (b.x() - a.x());
            if (point.x() < crossing)
                inside = !inside;
        }
    }
    return inside;
}

} // namespace graph
