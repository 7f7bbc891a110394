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

// The next three write the places of a column that is a gap so far.
void takeLone(TraceColumn &result, const SampleSpan &samples, const PixelMapping &mapping, int i)
{
    result.x = bounded(mapping.x(samples.x(i)));
    const double y = std::isnan(result.x) ? gap : bounded(mapping.y(samples.y(i)));
    result.first = result.last = result.top = result.bottom = y;
}

// Few samples in the middle of their column: the extremes of their places are the places of their extremes.
void takeShared(TraceColumn &result, const SampleSpan &samples, const PixelMapping &mapping, int first)
{
    MinMax places;
    for (int i = first; i < first + result.samples; ++i) {
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
}

// Many samples.
void takeCrowded(TraceColumn &result, const SampleSpan &samples, const PixelMapping &mapping, int first)
{
    const int end = first + result.samples;
    const MinMax values = placedExtremes(samples, mapping, first, end);
    if (values.isEmpty())
        return;
    double places[] = {values.min, values.max, samples.y(first), samples.y(end - 1)};
    mapping.toY(places);
    for (double &place : places)
        place = bounded(place);
    // The greater value is above or, on a reversed axis, below.
    result.top = std::min(places[0], places[1]);
    result.bottom = std::max(places[0], places[1]);
    result.first = places[2];
    result.last = places[3];
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
        // Written where it stays: a copy would have to wait until all of its parts are in memory.
        columns.emplace_back();
        TraceColumn &result = columns.back();
        result = {column, end - first, double(column), gap, gap, gap, gap};
        // Of several samples beyond these columns none has a place: x that are not positive on a logarithmic axis.
        const bool hasPlaces = std::abs(column) != pixelLimit;
        if (end - first == 1)
            takeLone(result, samples, mapping, first);
        else if (hasPlaces && isDense)
            takeCrowded(result, samples, mapping, first);
        else if (hasPlaces)
            takeShared(result, samples, mapping, first);
        run = end - first;
        first = end;
    }
    return columns;
}

} // namespace graph
