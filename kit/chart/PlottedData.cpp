#include "kit/chart/PlottedData.h"

#include "axis/ValueAxis.h"
#include "data/PlotData.h"
#include "kit/chart/VisibleSpan.h"
#include "kit/plots/Shading.h"

#include <algorithm>
#include <limits>

namespace graph {

namespace {

constexpr Span nothing{std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity()};

Span spanOf(const MinMax &extent)
{
    return extent.isEmpty() ? nothing : Span{extent.min, extent.max};
}

DataExtent extentOf(const AbstractPlot *plot)
{
    if (const auto *source = dynamic_cast<const ExtentSource *>(plot))
        return source->dataExtent();
    constexpr double endless = std::numeric_limits<double>::max();
    return plot->plotData() ? dataExtent(*plot->plotData(), -endless, endless) : DataExtent();
}

DataExtent extentBetween(const AbstractPlot *plot, const Span &x)
{
    if (const auto *source = dynamic_cast<const ExtentSource *>(plot))
        return source->dataExtent(x.from, x.to);
    return plot->plotData() ? dataExtent(*plot->plotData(), x.from, x.to) : DataExtent();
}

} // namespace

// Bands are shown whole only where there is nothing else.
QList<AbstractPlot *> PlottedData::plotsOn(const ValueAxis *axis) const
{
    QList<AbstractPlot *> found;
    std::copy_if(m_plots.begin(), m_plots.end(), std::back_inserter(found), [axis](const AbstractPlot *plot) {
        return plot && plot->isVisible() && (plot->axisX() == axis || plot->axisY() == axis);
    });
    const auto firstShading = std::stable_partition(
        found.begin(), found.end(), [](const AbstractPlot *plot) { return !isShading(*plot); });
    if (firstShading != found.begin())
        found.erase(firstShading, found.end());
    return found;
}

DataExtent PlottedData::extent(const AbstractPlot *plot) const
{
    auto known = m_extents.find(plot);
    if (known == m_extents.end())
        known = m_extents.insert(plot, extentOf(plot));
    return *known;
}

// Of all samples. An axis of x does not ask for their values.
Span PlottedData::reach(const AbstractPlot *plot, const ValueAxis *axis) const
{
    if (plot->axisX() != axis)
        return spanOf(extent(plot).y);
    const auto *source = dynamic_cast<const ExtentSource *>(plot);
    if (source && !m_extents.contains(plot))
        return spanOf(source->extentX());
    return spanOf(extent(plot).x);
}

Span PlottedData::along(const ValueAxis *axis, bool onlyVisible) const
{
    Span span = nothing;
    const QList<AbstractPlot *> plots = plotsOn(axis);
    for (const AbstractPlot *plot : plots) {
        const ValueAxis *axisX = plot->axisX();
        const Span seen = onlyVisible && axisX ? visibleSpan(axisX) : nothing;
        if (seen.isEmpty()) {
            span = span.united(reach(plot, axis));
            continue;
        }
        const DataExtent found = extentBetween(plot, seen);
        span = span.united(spanOf(axisX == axis ? found.x : found.y));
    }
    return span;
}

double PlottedData::leastPositiveAlong(const ValueAxis *axis, bool onlyVisible) const
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    double least = infinity;
    const QList<AbstractPlot *> plots = plotsOn(axis);
    for (const AbstractPlot *plot : plots) {
        const PlotData *data = plot->plotData();
        const ValueAxis *axisX = plot->axisX();
        if (!data)
            continue;
        const Span seen = onlyVisible && axisX ? visibleSpan(axisX) : Span{-infinity, infinity};
        least = std::min(least, axisX == axis ? LeastPositive::x(data)
                                              : m_leastPositive->y(data, seen.from, seen.to));
    }
    return std::isfinite(least) ? least : 0.0;
}

bool PlottedData::restOnBaseline(const ValueAxis *axis) const
{
    const QList<AbstractPlot *> plots = plotsOn(axis);
    return std::any_of(plots.begin(), plots.end(), [axis](const AbstractPlot *plot) {
        const auto *source = dynamic_cast<const ExtentSource *>(plot);
        return source && plot->axisY() == axis && source->beginsAtBaseline();
    });
}

double PlottedData::reachBeyond(const ValueAxis *axis) const
{
    double share = 0.0;
    const QList<AbstractPlot *> plots = plotsOn(axis);
    for (const AbstractPlot *plot : plots) {
        const auto *source = dynamic_cast<const ExtentSource *>(plot);
        const int pixels = source ? source->reach() : 0;
        const double length = (plot->axisX() == axis ? plot->width() : plot->height()) - 1.0;
        // A place is somewhere in its pixel.
        if (pixels > 0 && length >= 1.0)
            share = std::max(share, (pixels + 1.0) / length);
    }
    return share;
}

bool PlottedData::fill(const ValueAxis *axis) const
{
    const QList<AbstractPlot *> plots = plotsOn(axis);
    return std::any_of(plots.begin(), plots.end(), [](const AbstractPlot *plot) {
        const auto *source = dynamic_cast<const ExtentSource *>(plot);
        return source && source->fillsExtent();
    });
}

} // namespace graph
