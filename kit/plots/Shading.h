#pragma once

#include "common/Export.h"

class AbstractPlot;

namespace graph {

// Whether the plot only shades parts of x, as the bands of a plan do, and has no values to read: no cursor stops at it, and
// no axis with a trace makes room for it.
GRAPH_CHARTS_EXPORT bool isShading(const AbstractPlot &plot);

} // namespace graph
