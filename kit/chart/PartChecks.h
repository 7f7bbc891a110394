#pragma once

#include "kit/chart/Finding.h"

class GraphView;

namespace graph {

// Cursors, markers, readouts and scales of the view that lack what they belong to; withStrays: those outside of every
// view in its window as well.
QVector<Finding> misplacedParts(const GraphView &view, bool withStrays);

// What is said of such a cursor.
QString cursorInNoView();

} // namespace graph
