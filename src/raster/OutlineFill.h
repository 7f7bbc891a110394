#pragma once

#include <QPoint>
#include <QRect>
#include <QVector>

class QPainterPath;

namespace graph {

// The pixels inside a path of straight lines that is moved by an offset, as far as they lie in clip, as
// disjoint rectangles: those that the raster engine fills without antialiasing, to the last one. All lines
// are closed, and the path's fill rule says what is inside. Coordinates are pixels, within +-(1 << 14) after
// the move.
QVector<QRect> filledRectangles(const QPainterPath &path, const QPoint &offset, const QRect &clip);

// The same for the line of that width in pixels along such a path, with bevelled joins and flat ends.
QVector<QRect> strokedRectangles(const QPainterPath &path, double width, const QPoint &offset,
                                 const QRect &clip);

} // namespace graph
