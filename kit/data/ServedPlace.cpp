#include "kit/data/ServedPlace.h"

#include "data/PlotData.h"

#include <QVariant>

#include <cmath>

namespace graph {

namespace {

double number(const PlotData &data, const char *property, double otherwise)
{
    bool isNumber = false;
    const double value = data.property(property).toDouble(&isNumber);
    return isNumber && std::isfinite(value) ? value : otherwise;
}

} // namespace

double servedStart(const PlotData &data, double otherwise)
{
    return number(data, "xFirsValue", otherwise);
}

double servedInterval(const PlotData &data, double otherwise)
{
    // At an interval of 0 there would be nothing to see.
    const double interval = number(data, "xIncrement", otherwise);
    return interval != 0.0 ? interval : otherwise;
}

} // namespace graph
