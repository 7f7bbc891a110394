#pragma once

#include "kit/plots/TraceColumns.h"

namespace graph {

// The samples with two neighbours at each side instead of one, which is how far the curve in between depends on
// them.
SampleSpan withCurveNeighbours(const SampleSpan &samples, const PixelMapping &mapping);

// The columns with more of them in between, one a pixel, so that a line through all of them is a curve: a cubic
// through each lone sample that goes no higher and no lower than the two samples it is between. To and from
// columns of several samples the line stays straight.
// width: that of the item; farther out than the widest line reaches nothing is added.
GRAPH_CHARTS_EXPORT std::vector<TraceColumn> curvedColumns(const std::vector<TraceColumn> &columns,
                                                           double width);

} // namespace graph
