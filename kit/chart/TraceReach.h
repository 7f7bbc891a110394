#pragma once

class AbstractPlot;

namespace graph {

// Whether the samples of the plot reach to that x, so that there is something to read: to half of the distance of samples
// beyond the last one, or a pixel.
bool reachesTo(const AbstractPlot &plot, double x);

} // namespace graph
