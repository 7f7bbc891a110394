#pragma once

#include <QString>

class AbstractPlot;
class GraphView;

namespace graph {

// Why new data cannot be meant like that, or are less than the view wants to show; empty when all is well. The
// sentence continues the name of the data, or of the plot that has made them itself.
QString reasonOfNewData(const GraphView &view, const AbstractPlot &plot);

} // namespace graph
