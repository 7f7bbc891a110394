#include "kit/plots/TraceColumns.h"

#include "data/ColumnSearch.h"

#include <cmath>
#include <limits>

namespace graph {

namespace {

constexpr double gap = std::numeric_limits<double>::quiet_NaN();

// Samples a column from which on it is quicker to search the end of a column than to look at each sample.
constexpr double fewestToSearch = 4.0;

// Places are bounded so that their differences do not overflow.
double bounded(double place)
{
    constexpr double farthest = 1e15;
    return std::isfinite(place) ? std::min(std::max(place, -farthest), farthest) : gap;
}

// The extremes of the places of samples first..end-1.
MinMax places(const SampleSpan &samples, const PixelMapping &mapping, int first, int end)
{
    MinMax values = samples.minMax(first, end);
    if (!values.isEmpty() && !(mapping.hasPlaceY(values.min) && mapping.hasPlaceY(values.max))) {
        values = {};
        for (int i = first; i < end; ++i) {
            const double y = samples.y(i);
            if (mapping.hasPlaceY(y))
                values.add({y, y});
        }
    }
    if (values.isEmpty())
        return {};
    // The greater value is above or, on a reversed axis, below.
    const double low = mapping.y(values.min);
    const double high = mapping.y(values.max);
    return {std::min(low, high), std::max(low, high)};
}

TraceColumn columnOf(const SampleSpan &samples, const PixelMapping &mapping, int column, int first, int end)
{
    TraceColumn result{column,
                       end - first,
                       bounded(mapping.x(samples.x(first))),
                       bounded(mapping.x(samples.x(end - 1))),
                       bounded(mapping.y(samples.y(first))),
                       bounded(mapping.y(samples.y(end - 1))),
                       gap,
                       gap};
    if (std::isnan(result.left) || std::isnan(result.right)) {
        result.first = result.last = gap;
        return result;
    }
    const MinMax extremes =
        end - first == 1 ? MinMax{result.first, result.first} : places(samples, mapping, first, end);
    if (!extremes.isEmpty()) {
        result.top = bounded(extremes.min);
        result.bottom = bounded(extremes.max);
    }
    return result;
}

} // namespace

std::vector<TraceColumn> traceColumns(const SampleSpan &samples, const PixelMapping &mapping)
{
    std::vector<TraceColumn> columns;
    columns.reserve(std::size_t(std::min(double(samples.size()), mapping.width() + 2.0)));
    const bool search = samples.size() >= fewestToSearch * mapping.width();
    int run = 1;
    for (int first = 0; first < samples.size();) {
        const int column = mapping.column(samples.x(first));
        int end = first + 1;
        if (search)
            end = columnEnd(samples, mapping, first, column, run);
        else
            while (end < samples.size() && mapping.column(samples.x(end)) == column)
                ++end;
        columns.push_back(columnOf(samples, mapping, column, first, end));
        run = end - first;
        first = end;
    }
    return columns;
}

} // namespace graph
