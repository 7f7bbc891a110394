#pragma once

#include "common/Export.h"

class PlotData;

namespace graph {

// What a service says of the x of its array, the value given where it says none: services publish it under names that
// are not those of properties, so that it lands in dynamic ones.
GRAPH_CHARTS_EXPORT double servedStart(const PlotData &data, double otherwise);
GRAPH_CHARTS_EXPORT double servedInterval(const PlotData &data, double otherwise);

} // namespace graph
