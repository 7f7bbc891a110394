#include "kit/plots/DataExtent.h"

#include "data/PlotData.h"

#include <algorithm>
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

namespace {

// The edge of a bar on the side away from its neighbour, in the middle of as much room as there is towards that one.
double outerEdge(double x, double neighbour, bool isLogarithmic)
{
    if (!isLogarithmic)
        return x + (x - neighbour) / 2.0;
    return x * std::sqrt(x / std::max(neighbour, 0.0));
}

} // namespace

DataExtent withHalfBars(DataExtent extent, const PlotData &data, const BarNeighbours &ofLone,
                        bool isLogarithmic)
{
    const SampleSpan samples = data.sampleSpan(extent.x.min, extent.x.max);
    const int last = samples.size() - 1;
    if (last < 0)
        return extent;
    const double first = samples.x(0);
    double left = outerEdge(first, last > 0 ? samples.x(1) : ofLone.right, isLogarithmic);
    double right = outerEdge(samples.x(last), last > 0 ? samples.x(last - 1) : ofLone.left, isLogarithmic);
    if (last == 0) {
        // As wide to both sides as to the nearer one.
        const auto mirrored = [first, isLogarithmic](double x) {
            return isLogarithmic ? first / x * first : first + (first - x);
        };
        const double nearer = std::max(left, mirrored(right));
        left = nearer;
        right = mirrored(nearer);
    }
    for (const double x : {left, right}) {
        if (std::isfinite(x) && (!isLogarithmic || x > 0.0))
            extent.x.add({x, x});
    }
    return extent;
}

} // namespace graph
