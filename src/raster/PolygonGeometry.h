#pragma once

#include <QPolygonF>
#include <QRectF>

namespace graph {

// Item coordinates are bounded by this before lines and shapes are clipped: beyond it, their differences
// could overflow and the visible part be lost.
constexpr double farthestCoordinate = 1e15;

// Shortens the line to the part inside the rectangle, edges included. False, the points unspecified, when no
// part is inside or a coordinate or the line's extent is not finite.
bool clipLine(QPointF &begin, QPointF &end, const QRectF &rect);

// The part of the closed polygon inside the rectangle, which may run along the rectangle's edges where the
// polygon leaves it; empty when nothing is inside. All coordinates must be finite.
QPolygonF clippedPolygon(const QPolygonF &polygon, const QRectF &rect);

// Whether a horizontal ray from the point crosses the closed polygons an odd number of times. A point on a
// left or lower edge counts as inside, on a right or upper edge as outside; NaN is outside.
bool containsOddEven(const QVector<QPolygonF> &polygons, const QPointF &point);

} // namespace graph
