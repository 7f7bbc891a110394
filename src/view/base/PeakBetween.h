#pragma once

class PlotData;

namespace graph {

// The largest y of the samples from x = first to x = last; `otherwise` where there is none.
double peakBetween(const PlotData &data, double first, double last, double otherwise);

} // namespace graph
