#include "kit/plots/DataExtent.h"

#include "data/PlotData.h"

#include <cmath>
#include <limits>

namespace graph {

namespace {

constexpr double farthest = std::numeric_limits<double>::max();

MinMax finiteExtent(const SampleSpan &samples)
{
    MinMax extent = samples.minMax(0, samples.size());
    if (std::isfinite(extent.min) && std::isfinite(extent.max))
        return extent;
    extent = {};
    for (int i = 0; i < samples.size(); ++i) {
        if (std::isfinite(samples.y(i)))
            extent.add({samples.y(i), samples.y(i)});
    }
    return extent;
}

} // namespace

DataExtent dataExtent(const PlotData &data)
{
    return dataExtent(data, -farthest, farthest);
}

DataExtent dataExtent(const PlotData &data, double xMin, double xMax)
{
    const SampleSpan samples = data.sampleSpan(xMin, xMax);
    DataExtent extent;
    extent.y = finiteExtent(samples);
    if (data.usePointsAsSegments()) {
        // In the order of the data, and partly outside.
        for (int i = 0; i < samples.size(); ++i) {
            if (std::isfinite(samples.x(i)))
                extent.x.add({samples.x(i), samples.x(i)});
        }
    } else if (!samples.isEmpty()) {
        extent.x.add({samples.x(0), samples.x(samples.size() - 1)});
    }
    return extent;
}

MinMax extentX(const PlotData &data)
{
    if (data.size() == 0)
        return {};
    // Data know their order, and find the sample nearest to either end without reading the others; a series, also one
    // that would be beyond its own. Not as a view of the samples, after which the next one would be taken for the
    // second of the same data.
    const int last = data.size() - 1;
    const double from = data.x(qBound(0, data.indexOf(-farthest), last));
    const double to = data.x(qBound(0, data.indexOf(farthest), last));
    if (!data.usePointsAsSegments() && std::isfinite(from) && std::isfinite(to) && from <= to)
        return {from, to};
    return dataExtent(data).x;
}

DataExtent withHalfBars(DataExtent extent, const PlotData &data, bool isLogarithmic)
{
    const SampleSpan samples = data.sampleSpan(extent.x.min, extent.x.max);
    const int size = samples.size();
    if (size < 2)
        return extent;
    const double first = std::abs(samples.x(1) - samples.x(0)) / 2.0;
    const double last = std::abs(samples.x(size - 1) - samples.x(size - 2)) / 2.0;
    if (!isLogarithmic || extent.x.min > first)
        extent.x.min -= first;
    extent.x.max += last;
    return extent;
}

} // namespace graph
