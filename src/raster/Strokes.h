#pragma once

#include <QLine>
#include <QVector>

class QBrush;
class QPainter;
class QPainterPath;

namespace graph {

class LinePoints;

// Each of these paints the same pixels as the painter's own call for it, at a fraction of the cost where the
// raster engine paints whole pixels: as rectangles, each as wide as the shape allows. Elsewhere they are that
// call. The engine's own cost of a path grows with the square of its length, and that of vertical lines with
// each of their rows.

// QPainter::drawLines for vertical lines, with the painter's pen.
void drawUprightLines(QPainter *painter, const QVector<QLine> &lines);

// QPainter::strokePath for a path without curves, with the painter's pen.
void drawLinePath(QPainter *painter, const QPainterPath &path);
void drawLinePath(QPainter *painter, const LinePoints &points);

// QPainter::fillPath for a path without curves.
void fillOutline(QPainter *painter, const QPainterPath &path, const QBrush &brush);

// The same for the areas between such a path and a row, from the first to the last point of each of its
// lines.
void fillToRow(QPainter *painter, const QPainterPath &path, double row, const QBrush &brush);

} // namespace graph
