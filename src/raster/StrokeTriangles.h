#pragma once

#include <QPointF>

#include <vector>

class QPainterPath;

namespace graph {

// Appends triangles, three corners each, that cover the line of that width along a path of straight lines, with
// bevelled joints and flat ends. They overlap.
void addStrokeTriangles(std::vector<QPointF> &corners, const QPainterPath &path, double width);

} // namespace graph
