#pragma once

#include <QRegion>

class QPainter;
class QPainterPath;
class QPen;

namespace graph {

// No point is to the left of the one before it.
bool leadsRight(const QPainterPath &path);

// The engine draws them by other rules than lines with joints, and quickly.
bool isOfSeparateLines(const QPainterPath &path);

// Up and down together.
double rowsPassed(const QPainterPath &path);

// Whether a line of that width is painted more quickly row by row, piece by piece, than column by column, which is so
// unless it goes up and down much.
bool isQuickInRows(const QPainterPath &path, int width);

// Writes an opaque line of straight pieces with bevelled joints and flat ends into the image that a painter paints
// on, as far as it is inside a region in coordinates of the image: the pixels that the engine would paint. False,
// with nothing painted, where that cannot be done: in another device, and for paths that are not as the first two
// functions want them.
bool paintLine(QPainter *painter, const QRegion &region, const QPainterPath &path, const QPen &pen);

} // namespace graph
