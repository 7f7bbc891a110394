#pragma once

#include <QPoint>
#include <QRect>
#include <QVector>

class QPainterPath;

namespace graph {

class LinePoints;

// The pixels inside a path of straight lines that is moved by an offset, as far as they lie in clip, as
// disjoint rectangles: those that the raster engine fills without antialiasing, to the last one. All lines
// are closed, and the path's fill rule says what is inside. Coordinates are pixels, within +-(1 << 14) after
// the move.
QVector<QRect> filledRectangles(const QPainterPath &path, const QPoint &offset, const QRect &clip);

// The same for lines of that width in pixels, with bevelled joins and flat ends.
QVector<QRect> strokedRectangles(const LinePoints &points, double width, const QPoint &offset,
                                 const QRect &clip);

} // namespace graph
