#include "kit/plots/Shading.h"

#include "plots/GraphBands.h"

namespace graph {

bool isShading(const AbstractPlot &plot)
{
    return qobject_cast<const GraphBands *>(&plot);
}

} // namespace graph
