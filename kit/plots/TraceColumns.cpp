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
    if (std::abs(place) < pixelLimit)
        return place;
    return std::isfinite(place) ? std::min(std::max(place, -farthest), farthest) : gap;
}

// The extremes of the values, among samples first..end-1, that have a place.
MinMax placedExtremes(const SampleSpan &samples, const PixelMapping &mapping, int first, int end)
{
    MinMax values = samples.minMax(first, end);
    if (values.isEmpty() || (mapping.hasPlaceY(values.min) && mapping.hasPlaceY(values.max)))
        return values;
    values = {};
    for (int i = first; i < end; ++i) {
        const double y = samples.y(i);
        if (mapping.hasPlaceY(y))
            values.add({y, y});
    }
    return values;
}

TraceColumn lone(const SampleSpan &samples, const PixelMapping &mapping, int column, int i)
{
    const double x = bounded(mapping.x(samples.x(i)));
    const double y = std::isnan(x) ? gap : bounded(mapping.y(samples.y(i)));
    return {column, 1, x, y, y, y, y};
}

// Few samples in the middle of their column: the extremes of their places are the places of their extremes.
TraceColumn shared(const SampleSpan &samples, const PixelMapping &mapping, int column, int first, int end)
{
    TraceColumn result{column, end - first, double(column), gap, gap, gap, gap};
    if (std::abs(column) == pixelLimit)
        return result;
    MinMax places;
    for (int i = first; i < end; ++i) {
        const double place = bounded(mapping.y(samples.y(i)));
        if (i == first)
            result.first = place;
        result.last = place;
        // Comparisons with a gap are false.
        places.min = place < places.min ? place : places.min;
        places.max = place > places.max ? place : places.max;
    }
    if (!places.isEmpty()) {
        result.top = places.min;
        result.bottom = places.max;
    }
    return result;
}

// Many samples.
TraceColumn crowded(const SampleSpan &samples, const PixelMapping &mapping, int column, int first, int end)
{
    TraceColumn result{column, end - first, double(column), gap, gap, gap, gap};
    // Beyond these columns samples have no place: x that are not positive on a logarithmic axis.
    if (std::abs(column) == pixelLimit)
        return result;
    const MinMax values = placedExtremes(samples, mapping, first, end);
    if (values.isEmpty())
        return result;
    double places[] = {values.min, values.max, samples.y(first), samples.y(end - 1)};
    mapping.toY(places);
    for (double &place : places)
        place = bounded(place);
    // The greater value is above or, on a reversed axis, below.
    result.top = std::min(places[0], places[1]);
    result.bottom = std::max(places[0], places[1]);
    result.first = places[2];
    result.last = places[3];
    return result;
}

} // namespace

std::vector<TraceColumn> traceColumns(const SampleSpan &samples, const PixelMapping &mapping)
{
    std::vector<TraceColumn> columns;
    columns.reserve(std::size_t(std::min(double(samples.size()), mapping.width() + 2.0)));
    const bool isDense = samples.size() >= fewestToSearch * mapping.width();
    ColumnSearch search(samples, mapping);
    int run = 1;
    int next = samples.isEmpty() ? 0 : search.columnOf(0);
    for (int first = 0; first < samples.size();) {
        const int column = next;
        int end = first + 1;
        if (isDense) {
            end = search.endOf(column, first, run);
            if (end < samples.size())
                next = search.columnOf(end);
        } else {
            while (end < samples.size() && (next = search.columnOf(end)) == column)
                ++end;
        }
        if (end - first == 1)
            columns.push_back(lone(samples, mapping, column, first));
        else if (isDense)
            columns.push_back(crowded(samples, mapping, column, first, end));
        else
            columns.push_back(shared(samples, mapping, column, first, end));
        run = end - first;
        first = end;
    }
    return columns;
}

} // namespace graph
