#pragma once

class AbstractPlot;

namespace graph {

// A plot outside of every view has nobody who looks at the chart: it says so itself, once, after the time that
// layouts and Loaders take.
void tellOfPlaceLater(AbstractPlot *plot);

} // namespace graph
