#pragma once

#include <QLine>
#include <QVector>

class QBrush;
class QPainter;
class QPainterPath;

namespace graph {

// Draws upright lines with the painter's pen, to the same pixels as QPainter::drawLines: as filled rectangles, at half
// the cost or less, where the engine is known to make the same of both, else as lines.
void drawUprightLines(QPainter *painter, const QVector<QLine> &lines);

// Draws lines along a path without curves with the painter's pen, to the same pixels as QPainter::strokePath: a path of
// ascending x in bands where the engine is known to make the same of it, because there the cost of one stroke grows
// with the square of its length.
void drawLinePath(QPainter *painter, const QPainterPath &path);

// Fills the areas between such a path and a row, from the first to the last point of each of its lines, to the same
// pixels as QPainter::fillPath and in bands for the same reason.
void fillToRow(QPainter *painter, const QPainterPath &path, double row, const QBrush &brush);

} // namespace graph
