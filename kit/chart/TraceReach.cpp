#include "kit/chart/TraceReach.h"

#include "data/PlotData.h"
#include "kit/chart/DataChecks.h"
#include "view/base/AbstractPlot.h"

#include <cmath>
#include <limits>

namespace graph {

namespace {

// end: the index of the sample at that end, next: of the one beside it.
bool isNearEnd(const AbstractPlot &plot, const SampleSpan &samples, int end, int next, double x)
{
    const double distance = std::abs(x - samples.x(end));
    const double half = samples.size() > 1 ? std::abs(samples.x(next) - samples.x(end)) / 2.0 : 0.0;
    return distance <= half || std::abs(plot.mapToItemX(x) - plot.mapToItemX(samples.x(end))) <= 1.0;
}

} // namespace

bool reachesTo(const AbstractPlot &plot, double x)
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    const PlotData *data = plot.plotData();
    if (!data || !hasSamples(*data) || data->usePointsAsSegments() || !plot.axisX())
        return true;
    const SampleSpan samples = data->sampleSpan(-infinity, infinity);
    const int last = samples.size() - 1;
    if (last < 0)
        return false;
    if (x < samples.x(0))
        return isNearEnd(plot, samples, 0, 1, x);
    return !(x > samples.x(last)) || isNearEnd(plot, samples, last, last - 1, x);
}

} // namespace graph
