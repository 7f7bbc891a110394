#include "plots/ColumnEnvelope.h"

#include "data/ColumnSearch.h"
#include "plots/SampleLine.h"

#include <algorithm>
#include <cmath>

namespace graph {

namespace {

// Samples a column from which on it is quicker to search the end of a column than to look at each sample.
constexpr qint64 fewestToSearch = 4;
// Samples below which halves are not asked for by themselves.
constexpr int fewestToSplit = 128;

MinMax drawableMinMax(double y, bool positiveOnly)
{
    return std::isfinite(y) && (y > 0.0 || !positiveOnly) ? MinMax{y, y} : MinMax();
}

} // namespace

MinMax drawableMinMax(const SampleSpan &samples, int first, int end, bool positiveOnly)
{
    MinMax extremes = samples.minMax(first, end);
    const bool areDrawable =
        std::isfinite(extremes.min) && std::isfinite(extremes.max) && (extremes.min > 0.0 || !positiveOnly);
    if (extremes.isEmpty() || areDrawable)
        return extremes;
    extremes = {};
    if (samples.hasPyramid() && end - first > fewestToSplit) {
        // What has no place is often all in one part; the rest is known without reading it.
        const int middle = first + (end - first) / 2;
        extremes = drawableMinMax(samples, first, middle, positiveOnly);
        extremes.add(drawableMinMax(samples, middle, end, positiveOnly));
        return extremes;
    }
    for (int i = first; i < end; ++i)
        extremes.add(drawableMinMax(samples.y(i), positiveOnly));
    return extremes;
}

namespace {

class Scan
{
public:
    Scan(ColumnEnvelope &envelope, bool bridgeGaps)
        : m_envelope(envelope)
        , m_bridgeGaps(bridgeGaps)
    {
    }

    // Extremes of samples that follow each other in one column; columns come in the order of the samples.
    void add(int column, const MinMax &extremes, int firstSample)
    {
        if (extremes.isEmpty()) {
            if (column >= 0 && column < m_envelope.columns() &&
                m_envelope.state[column] == ColumnEnvelope::Empty) {
                m_envelope.state[column] = ColumnEnvelope::Gap;
                m_envelope.firstSample[column] = firstSample;
            }
            return;
        }
        m_envelope.firstColumn = m_any ? std::min(m_envelope.firstColumn, column) : column;
        m_any = true;
        if (column >= m_envelope.columns())
            return;
        m_envelope.lastColumn = std::max(m_envelope.lastColumn, column);
        if (column > m_column) {
            bridgeTo(column);
            m_envelope.max[column] = extremes.max;
            m_envelope.min[column] = extremes.min;
            if (m_envelope.state[column] == ColumnEnvelope::Empty)
                m_envelope.firstSample[column] = firstSample;
            m_envelope.state[column] = ColumnEnvelope::Filled;
            m_column = column;
        } else if (m_column != -1) {
            m_envelope.max[m_column] = std::max(m_envelope.max[m_column], extremes.max);
            m_envelope.min[m_column] = std::min(m_envelope.min[m_column], extremes.min);
        }
    }

private:
    void bridgeTo(int column)
    {
        if (!m_bridgeGaps)
            return;
        for (int k = std::max(1, m_column + 1); k < column; ++k) {
            m_envelope.max[k] = m_envelope.max[k - 1];
            m_envelope.min[k] = m_envelope.min[k - 1];
            m_envelope.state[k] = m_envelope.state[k - 1];
        }
    }

    ColumnEnvelope &m_envelope;
    bool m_bridgeGaps;
    bool m_any = false;
    int m_column = -1; // the last one that was filled
};

// The columns between two others on the straight line between these places.
void fillStraight(ColumnEnvelope &envelope, int before, int behind, const PixelMapping &mapping,
                  const QPointF &from, const QPointF &to)
{
    const SampleLine line(mapping, from, to);
    double left = line.valueAt(before + 1);
    for (int column = before + 1; column < behind; ++column) {
        const double right = line.valueAt(column + 1);
        envelope.min[column] = std::min(left, right);
        envelope.max[column] = std::max(left, right);
        envelope.state[column] = ColumnEnvelope::Filled;
        left = right;
    }
}

// One after the other, up to the first at or behind a column: nothing that follows is inside the item.
template <typename ColumnOf>
void addSamples(Scan &scan, const SampleSpan &samples, int last, bool positiveOnly, ColumnOf columnOf)
{
    for (int i = 0; i < samples.size(); ++i) {
        const int column = columnOf(i);
        scan.add(column, drawableMinMax(samples.y(i), positiveOnly), i);
        if (column >= last)
            break;
    }
}

// The same, of all samples of a column at once.
void addColumns(Scan &scan, const SampleSpan &samples, const PixelMapping &mapping, int last)
{
    ColumnSearch search(samples, mapping);
    int run = 1;
    for (int i = 0; i < samples.size();) {
        const int column = search.columnOf(i);
        const int end = std::max(search.endOf(column, i, run), i + 1);
        scan.add(column, drawableMinMax(samples, i, end, !mapping.isLinearY()), i);
        if (column >= last)
            break;
        run = end - i;
        i = end;
    }
}

// The rows of a column's stroke that is at least so many pixels long.
QLine strokeOfPixels(int column, const MinMax &extremes, const PixelMapping &mapping, double leastPixels)
{
    double top = mapping.y(extremes.max);
    double bottom = mapping.y(extremes.min);
    if (std::abs(bottom - top) < leastPixels) {
        top = (top + bottom - leastPixels) / 2.0;
        bottom = top + leastPixels;
    }
    return QLine(column, roundedPixel(bottom), column, roundedPixel(top));
}

} // namespace

ColumnEnvelope columnEnvelope(const SampleSpan &samples, const PixelMapping &mapping, int columns,
                              double baseline, bool bridgeGaps)
{
    const std::size_t size = std::max(0, columns);
    ColumnEnvelope envelope;
    envelope.max.assign(size, baseline);
    envelope.min.assign(size, baseline);
    envelope.state.assign(size, ColumnEnvelope::Empty);
    envelope.firstSample.resize(size);

    Scan scan(envelope, bridgeGaps);
    const bool ascending = (mapping.scaleX() > 0.0) != samples.isReversed();
    const int last = ascending ? columns : std::numeric_limits<int>::max();
    const bool positiveOnly = !mapping.isLinearY();
    ColumnSearch search(samples, mapping);
    if (ascending && samples.size() >= fewestToSearch * columns)
        addColumns(scan, samples, mapping, last);
    else if (mapping.isLinearX() && mapping.isLinearY())
        addSamples(scan, samples, last, false, [&](int i) { return mapping.linearColumn(samples.x(i)); });
    else
        addSamples(scan, samples, last, positiveOnly, [&](int i) { return search.columnOf(i); });
    return envelope;
}

void bridgeStraight(ColumnEnvelope &envelope, const SampleSpan &samples, const PixelMapping &mapping)
{
    const auto hasPlace = [&](int i) { return mapping.hasPlace(samples.x(i), samples.y(i)); };
    int known = -1; // the sample whose place is
    QPointF place;
    int before = -1;
    for (int column = 0; column < envelope.columns(); ++column) {
        if (envelope.state[column] == ColumnEnvelope::Empty)
            continue;
        const bool isBridge = before >= 0 && column > before + 1 &&
                              envelope.state[before] == ColumnEnvelope::Filled &&
                              envelope.state[column] == ColumnEnvelope::Filled;
        const int to = isBridge ? envelope.firstSample[column] : 0;
        if (to > 0 && hasPlace(to - 1) && hasPlace(to)) {
            // Mostly the sample that the line before ended at.
            const QPointF from = to - 1 == known ? place : SampleLine::placeOf(mapping, samples.at(to - 1));
            place = SampleLine::placeOf(mapping, samples.at(to));
            known = to;
            fillStraight(envelope, before, column, mapping, from, place);
        }
        before = column;
    }
}

void joinColumns(ColumnEnvelope &envelope, double baseline, bool wholeWidth)
{
    const int first = wholeWidth ? 0 : envelope.firstColumn;
    const int last = wholeWidth ? envelope.columns() - 1 : envelope.lastColumn;
    if (last < 0)
        return;
    // Missing values end a trace: there is nothing to stretch to.
    const auto neighbour = [&envelope](int candidate, int column) {
        return envelope.state[candidate] == ColumnEnvelope::Gap ? column : candidate;
    };
    for (int c = std::max(0, envelope.firstColumn); c < envelope.columns(); ++c) {
        if (c == 0 && first < 0)
            continue; // the one before it is outside the item
        const int previous = neighbour(std::max(first, c - 1), c);
        const int next = neighbour(std::min(last, c + 1), c);
        double &min = envelope.min[c];
        double &max = envelope.max[c];
        if (min > baseline)
            min = std::min({min, envelope.max[previous], envelope.max[next]});
        else if (max < baseline)
            max = std::max({max, envelope.min[previous], envelope.min[next]});
    }
}

QVector<QLine> envelopeStrokes(const ColumnEnvelope &envelope, const PixelMapping &mapping, double minSpan,
                               double baseline, bool keepEmpty)
{
    const auto isEmpty = [=](double min, double max) {
        return !keepEmpty && min == baseline && max == baseline;
    };
    // A frame has one for each of its columns: written in place, and the axis is asked for its kind once.
    QVector<QLine> strokes(envelope.columns());
    QLine *const first = strokes.data();
    QLine *end = first;
    const bool isLinear = mapping.isLinearY();
    for (int c = 0; c < envelope.columns(); ++c) {
        double min = envelope.min[c];
        double max = envelope.max[c];
        if (!isLinear) {
            if (!isEmpty(min, max))
                *end++ = strokeOfPixels(c, {min, max}, mapping, minSpan);
            continue;
        }
        if (max - min < minSpan) {
            if (isEmpty(min, max))
                continue;
            max = (max + min + minSpan) / 2;
            min = max - minSpan;
        }
        *end++ = QLine(c, mapping.roundedLinearRow(min), c, mapping.roundedLinearRow(max));
    }
    strokes.resize(int(end - first));
    return strokes;
}

QVector<QLine> fillStrokes(const ColumnEnvelope &envelope, const PixelMapping &mapping, int baseRow)
{
    QVector<QLine> strokes;
    strokes.reserve(envelope.columns());
    for (int c = 0; c < envelope.columns(); ++c) {
        const int row = mapping.row(envelope.max[c]);
        if (row != baseRow)
            strokes.append(QLine(c, baseRow, c, row));
    }
    return strokes;
}

BarStrokes barStrokes(const ColumnEnvelope &envelope, const PixelMapping &mapping, int baseRow)
{
    BarStrokes strokes;
    strokes.bars.reserve(envelope.columns());
    for (int c = 0; c < envelope.columns(); ++c) {
        const int minRow = mapping.row(envelope.min[c]);
        const int maxRow = mapping.row(envelope.max[c]);
        if ((baseRow < minRow) != (baseRow < maxRow)) {
            strokes.bars.append(QLine(c, minRow, c, maxRow));
            continue;
        }
        if (baseRow != minRow)
            strokes.bars.append(QLine(c, baseRow, c, minRow));
        if (minRow != maxRow)
            strokes.spreads.append(QLine(c, minRow, c, maxRow));
    }
    return strokes;
}

} // namespace graph
