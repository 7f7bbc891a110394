#include "view/base/PeakBetween.h"

#include "data/PlotData.h"

namespace graph {

double peakBetween(const PlotData &data, double first, double last, double otherwise)
{
    double peak = otherwise;
    bool found = false;
    for (int i = 0; i < data.size(); ++i) {
        const double x = data.x(i);
        if (!(x >= first && x <= last))
            continue;
        const double y = data.y(i);
        if (!found || y > peak)
            peak = y;
        found = true;
    }
    return peak;
}

} // namespace graph
