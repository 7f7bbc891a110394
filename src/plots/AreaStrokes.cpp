#include "plots/AreaStrokes.h"

#include "data/ColumnSearch.h"
#include "plots/ColumnEnvelope.h"

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

bool isFinite(const MinMax &extremes)
{
    return std::isfinite(extremes.min) && std::isfinite(extremes.max);
}

// The pairs first..end-1 of which both halves are finite. The quick way holds only where that is so of all.
void addPairs(Band &band, const SampleSpan &upper, const SampleSpan &lower, int first, int end)
{
    const MinMax above = upper.minMax(first, end);
    const MinMax below = lower.minMax(first, end);
    if (isFinite(above) && isFinite(below) && !upper.hasNaN(first, end) && !lower.hasNaN(first, end)) {
        band.add(above.max, below.min);
        return;
    }
    for (int i = first; i < end; ++i) {
        if (std::isfinite(upper.y(i)) && std::isfinite(lower.y(i)))
            band.add(upper.y(i), lower.y(i));
    }
}

} // namespace

QVector<QLine> areaStrokes(const SampleSpan &upper, const SampleSpan &lower, const PixelMapping &mapping,
                           int columns, bool ascending)
{
    std::vector<Band> bands(std::size_t(qMax(0, columns)));
    const bool runs = ascending && mapping.scaleX() > 0.0;
    int last = -1;
    int count = 1;
    for (int i = 0, end = 0; i < upper.size(); i = end) {
        const int column = mapping.column(upper.x(i));
        if (column >= columns && runs)
            break; // nothing that follows is inside the item
        end = runs ? columnEnd(upper, mapping, i, column, count) : i + 1;
        count = end - i;
        if (column >= columns || (column < 0 && last < 0))
            continue;
        for (int k = qMax(1, last + 1); k < column; ++k)
            bands[k] = bands[k - 1];
        last = qMax(last, column);
        addPairs(bands[last], upper, lower, i, end);
    }

    QVector<QLine> strokes;
    strokes.reserve(last + 1);
    for (int c = 0; c <= last; ++c) {
        if (!std::isnan(bands[c].top))
            strokes.append(QLine(c, mapping.row(bands[c].bottom), c, mapping.row(bands[c].top)));
    }
    return strokes;
}

} // namespace graph
