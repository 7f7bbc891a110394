#pragma once

#include <QString>
#include <QVector>

class AbstractPlot;
class PlotData;

namespace graph {

// Whether the samples are points in the plane; those of regions and bands are not.
bool hasSamples(const PlotData &data);

// Whether the plot has made its data itself, of what a document has written in the plot.
bool isOwnData(const AbstractPlot &plot);

// Whether the plot fills what lies between its values and the baseline.
bool reachesBaseline(const AbstractPlot &plot);
// Where that is.
double shownBaseline(const AbstractPlot &plot);

// Why nothing comes of the plot's data: their address, the service behind it, or the samples themselves. Empty
// when all is well, and when there is just nothing yet. The sentence continues the name of the data, or of the
// plot that has made them itself.
QString reasonOfData(const AbstractPlot &plot);

// The data that the plot's own are made of, which may come from the bus.
QVector<const PlotData *> dataBehind(const AbstractPlot &plot);

// That no sample of the plot's data lies in what it shows. Empty when one may.
QString reasonOutOfRange(const AbstractPlot &plot);

} // namespace graph
