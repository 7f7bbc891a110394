#pragma once

#include <QRegion>

class QPainter;
class QPen;

namespace graph {

class LinePoints;

// Whether a line of that width is painted more quickly row by row, piece by piece, than column by column, which is so
// unless it goes up and down much.
bool isQuickInRows(const LinePoints &points, int width);

// Whether the pixels of such lines are found here: they lead to the right, and are not separate.
bool haveKnownPixels(const LinePoints &points);

// Writes an opaque line of straight pieces with bevelled joints and flat ends into the image that a painter paints
// on, as far as it is inside a region in coordinates of the image: the pixels that the engine would paint, if they are
// known. False, with nothing painted, in another device.
bool paintLine(QPainter *painter, const QRegion &region, const LinePoints &points, const QPen &pen);

} // namespace graph
