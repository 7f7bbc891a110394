#pragma once

#include "common/Export.h"

#include <QString>

class AbstractPlot;

namespace graph {

// The units of what a plot shows: those of its data, else, because data know the units of instruments only, what
// the trace or the service says. Empty without any.
GRAPH_CHARTS_EXPORT QString unitOfPositions(const AbstractPlot &plot);
// Of a waterfall: its levels.
GRAPH_CHARTS_EXPORT QString unitOfValues(const AbstractPlot &plot);

} // namespace graph
