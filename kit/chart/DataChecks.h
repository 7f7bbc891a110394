#pragma once

#include <QString>

class AbstractPlot;
class PlotData;

namespace graph {

// Whether the samples are points in the plane; those of regions and bands are not.
bool hasSamples(const PlotData &data);

// Why nothing comes of the data: their address, the service behind it, or the samples themselves. Empty when
// all is well, and when there is just nothing yet. The sentence continues the name of the data.
QString reasonOfData(const PlotData &data);

// That no sample of the plot's data lies in what it shows. Empty when one may.
QString reasonOutOfRange(const AbstractPlot &plot);

} // namespace graph
