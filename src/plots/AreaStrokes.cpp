#include "plots/AreaStrokes.h"

#include "data/ColumnSearch.h"
#include "plots/ColumnEnvelope.h"
#include "plots/SampleLine.h"

#include <cmath>
#include <limits>

namespace graph {

namespace {

// NaN in both where there is nothing to draw.
struct Band
{
    double top = std::numeric_limits<double>::quiet_NaN();
    double bottom = std::numeric_limits<double>::quiet_NaN();

    void add(double upper, double lower)
    {
        top = std::fmax(top, upper); // NaN gives way
        bottom = std::fmin(bottom, lower);
    }
};

bool haveAllPlaces(const MinMax &extremes, const PixelMapping &mapping)
{
    return mapping.hasPlaceY(extremes.min) && mapping.hasPlaceY(extremes.max);
}

// The pairs first..end-1 of which both halves have a place. The quick way holds only where that is so of all.
void addPairs(Band &band, const SampleSpan &upper, const SampleSpan &lower, const PixelMapping &mapping,
              int first, int end)
{
    const MinMax above = upper.minMax(first, end);
    const MinMax below = lower.minMax(first, end);
    if (haveAllPlaces(above, mapping) && haveAllPlaces(below, mapping) && !upper.hasNaN(first, end) &&
        !lower.hasNaN(first, end)) {
        band.add(above.max, below.min);
        return;
    }
    for (int i = first; i < end; ++i) {
        if (mapping.hasPlaceY(upper.y(i)) && mapping.hasPlaceY(lower.y(i)))
            band.add(upper.y(i), lower.y(i));
    }
}

// The columns between two samples: those of the pair before, or, on an axis that spreads some samples over many
// columns, the area between the lines from pair to pair.
void bridge(std::vector<Band> &bands, int from, int to, const SampleSpan &upper, const SampleSpan &lower,
            int i, const PixelMapping &mapping)
{
    if (mapping.isLinearX() || i == 0 || std::isnan(bands[std::size_t(from) - 1].top)) {
        for (int k = from; k < to; ++k)
            bands[k] = bands[k - 1];
        return;
    }
    const QPointF topFrom = SampleLine::placeOf(mapping, upper.at(i - 1));
    const QPointF topTo = SampleLine::placeOf(mapping, upper.at(i));
    const SampleLine top(mapping, topFrom, topTo);
    const SampleLine bottom(mapping, {topFrom.x(), mapping.y(lower.y(i - 1))},
                            {topTo.x(), mapping.y(lower.y(i))});
    for (int k = from; k < to; ++k)
        bands[k].add(top.valueAt(k), bottom.valueAt(k));
}

QVector<QLine> strokesOf(const std::vector<Band> &bands, int count, const PixelMapping &mapping)
{
    QVector<QLine> strokes;
    strokes.reserve(count);
    for (int c = 0; c < count; ++c) {
        if (!std::isnan(bands[c].top))
            strokes.append(QLine(c, mapping.row(bands[c].bottom), c, mapping.row(bands[c].top)));
    }
    return strokes;
}

} // namespace

QVector<QLine> areaStrokes(const SampleSpan &upper, const SampleSpan &lower, const PixelMapping &mapping,
                           int columns, bool ascending)
{
    std::vector<Band> bands(std::size_t(qMax(0, columns)));
    const bool runs = ascending && (mapping.scaleX() > 0.0) != upper.isReversed();
    ColumnSearch search(upper, mapping);
    int last = -1;
    int count = 1;
    for (int i = 0, end = 0; i < upper.size(); i = end) {
        const int column = search.columnOf(i);
        if (column >= columns && runs)
            break; // nothing that follows is inside the item
        end = runs ? std::max(search.endOf(column, i, count), i + 1) : i + 1;
        count = end - i;
        if (column >= columns || (column < 0 && last < 0))
            continue;
        bridge(bands, qMax(1, last + 1), column, upper, lower, i, mapping);
        last = qMax(last, column);
        addPairs(bands[last], upper, lower, mapping, i, end);
    }
    return strokesOf(bands, last + 1, mapping);
}

} // namespace graph
