#include "kit/plots/PlotUnits.h"

#include "data/PlotData.h"
#include "kit/plots/Trace.h"
#include "kit/plots/WaterfallPlot.h"
#include "view/base/AbstractPlot.h"

namespace graph {

QString unitOfPositions(const AbstractPlot &plot)
{
    const PlotData *data = plot.plotData();
    if (!data)
        return {};
    return data->xUnits().isEmpty() ? data->busBinding().value(QStringLiteral("xUnits")).toString()
                                    : data->xUnits();
}

QString unitOfValues(const AbstractPlot &plot)
{
    if (const auto *waterfall = qobject_cast<const WaterfallPlot *>(&plot))
        return waterfall->unit();
    const PlotData *data = plot.plotData();
    if (!data)
        return {};
    if (!data->yUnits().isEmpty())
        return data->yUnits();
    const auto *trace = qobject_cast<const Trace *>(&plot);
    if (trace && !trace->unit().isEmpty())
        return trace->unit();
    return data->busBinding().value(QStringLiteral("yUnits")).toString();
}

} // namespace graph
