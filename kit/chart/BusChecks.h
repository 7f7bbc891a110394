#pragma once

#include <QString>

class PlotData;

namespace graph {

// Why nothing comes of the address of data, or of the service behind it. Empty when all is well, or there is no address.
// The sentence continues the name of the data.
QString reasonOfBus(const PlotData &data);

} // namespace graph
