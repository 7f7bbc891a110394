#pragma once

#include "axis/AxisLabels.h"

class QPainter;

namespace graph {

// Draws what it is given of an axis, and asks nothing back. plot: the plot area, in pixels of the painter.

void paintAxisLines(QPainter *painter, const AxisLook &look, const TickMarks &marks, const QRectF &plot);

void paintAxisLabels(QPainter *painter, const LabelSource &source, const QRectF &plot,
                     const LabelSurroundings &surroundings);

} // namespace graph
