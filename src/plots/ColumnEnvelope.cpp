#include "plots/ColumnEnvelope.h"

#include "data/ColumnSearch.h"

#include <algorithm>
#include <cmath>

namespace graph {

MinMax finiteMinMax(const SampleSpan &samples, int first, int end)
{
    MinMax extremes = samples.minMax(first, end);
    if (extremes.isEmpty() || (std::isfinite(extremes.min) && std::isfinite(extremes.max)))
        return extremes;
    extremes = {};
    for (int i = first; i < end; ++i) {
        const double y = samples.y(i);
        if (std::isfinite(y))
            extremes.add({y, y});
    }
    return extremes;
}

namespace {

// Samples a column from which on it is quicker to search the end of a column than to look at each sample.
constexpr qint64 fewestToSearch = 4;

MinMax finiteMinMax(double y)
{
    return std::isfinite(y) ? MinMax{y, y} : MinMax();
}

class Scan
{
public:
    Scan(ColumnEnvelope &envelope, bool bridgeGaps)
        : m_envelope(envelope)
        , m_bridgeGaps(bridgeGaps)
    {
    }

    // Extremes of samples that follow each other in one column; columns come in the order of the samples.
    void add(int column, const MinMax &extremes)
    {
        if (extremes.isEmpty()) {
            if (column >= 0 && column < m_envelope.columns() && m_envelope.state[column] == ColumnEnvelope::Empty)
                m_envelope.state[column] = ColumnEnvelope::Hole;
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

} // namespace

ColumnEnvelope columnEnvelope(const SampleSpan &samples, const PixelMapping &mapping, int columns, double baseline,
                              bool bridgeGaps)
{
    const std::size_t size = std::max(0, columns);
    ColumnEnvelope envelope;
    envelope.max.assign(size, baseline);
    envelope.min.assign(size, baseline);
    envelope.state.assign(size, ColumnEnvelope::Empty);

    Scan scan(envelope, bridgeGaps);
    const bool ascending = mapping.scaleX() > 0.0;
    const bool byColumn = ascending && samples.size() >= fewestToSearch * columns;
    int run = 1;
    for (int i = 0; i < samples.size();) {
        const int column = mapping.column(samples.x(i));
        const int end = byColumn ? columnEnd(samples, mapping, i, column, run) : i + 1;
        scan.add(column, byColumn ? finiteMinMax(samples, i, end) : finiteMinMax(samples.y(i)));
        if (ascending && column >= columns)
            break; // nothing that follows is inside the item
        run = end - i;
        i = end;
    }
    return envelope;
}

void joinColumns(ColumnEnvelope &envelope, double baseline, bool wholeWidth)
{
    const int columns = envelope.columns();
    const int start = wholeWidth ? 0 : envelope.firstColumn;
    const int last = wholeWidth ? columns - 1 : envelope.lastColumn;
    const auto inside = [columns](int column) { return column >= 0 && column < columns; };
    for (int c = std::max(0, envelope.firstColumn); c < columns; ++c) {
        int previous = start < c ? c - 1 : start;
        int next = c < std::min(last, columns) ? c + 1 : last;
        if (!inside(previous) || !inside(next))
            continue;
        // Missing values end a trace: there is nothing to stretch to.
        if (envelope.state[previous] == ColumnEnvelope::Hole)
            previous = c;
        if (envelope.state[next] == ColumnEnvelope::Hole)
            next = c;
        double &min = envelope.min[c];
        double &max = envelope.max[c];
        if (min > baseline && max > baseline) {
            if (min > envelope.max[previous] || min > envelope.max[next])
                min = std::min(envelope.max[previous], envelope.max[next]);
        } else if (min < baseline && max < baseline) {
            if (max < envelope.min[previous] || max < envelope.min[next])
                max = std::max(envelope.min[previous], envelope.min[next]);
        }
    }
}

QVector<QLine> envelopeStrokes(const ColumnEnvelope &envelope, const PixelMapping &mapping, double minSpan,
                               double baseline, bool keepEmpty)
{
    QVector<QLine> strokes;
    strokes.reserve(envelope.columns());
    for (int c = 0; c < envelope.columns(); ++c) {
        double min = envelope.min[c];
        double max = envelope.max[c];
        if (max - min < minSpan) {
            if (!keepEmpty && min == baseline && max == baseline)
                continue;
            max = (max + min + minSpan) / 2;
            min = max - minSpan;
        }
        strokes.append(QLine(c, mapping.roundedRow(min), c, mapping.roundedRow(max)));
    }
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
