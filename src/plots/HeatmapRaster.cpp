#include "plots/HeatmapRaster.h"

#include "plots/CellCover.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

namespace graph {

namespace {

using Code = unsigned char;

CellRange hull(const std::vector<CellRange> &ranges)
{
    CellRange all;
    for (const CellRange &range : ranges)
        all.include(range);
    return all;
}

// Item coordinates of the borders between columns: half way between their frequencies. The first and the last
// column are symmetric; a lone one has no width.
std::vector<double> columnEdges(const Heatmap &heatmap, const PixelMapping &mapping)
{
    const auto frequency = [&](int column) { return heatmap.columnFrequencies[column] / 1e6; };
    const int columns = int(heatmap.columnFrequencies.size());
    if (columns == 1)
        return {mapping.x(frequency(0)), mapping.x(frequency(0))};
    std::vector<double> edges(columns + 1);
    for (int c = 1; c < columns; ++c)
        edges[c] = mapping.x((frequency(c - 1) + frequency(c)) / 2.0);
    edges[0] = mapping.x(frequency(0) - (frequency(1) - frequency(0)) / 2.0);
    edges[columns] =
        mapping.x(frequency(columns - 1) + (frequency(columns - 1) - frequency(columns - 2)) / 2.0);
    return edges;
}

float singlePrecision(double value)
{
    constexpr float infinity = std::numeric_limits<float>::infinity();
    if (std::abs(value) > std::numeric_limits<float>::max())
        return value > 0.0 ? infinity : -infinity;
    return float(value);
}

// Item coordinates of the borders between rows. Neighbours share theirs, so that rounding leaves no line
// blank.
std::vector<double> rowEdges(const Heatmap &heatmap, double topLevel, const PixelMapping &mapping)
{
    const float step = singlePrecision(heatmap.rowStep);
    const float top = singlePrecision(topLevel) + step / 2.0f;
    std::vector<double> edges(heatmap.rowCount + 1);
    for (int r = 0; r <= heatmap.rowCount; ++r)
        edges[r] = mapping.y(double(top - float(r) * step));
    return edges;
}

// Finds the largest code among the columns of each pixel of a line, by a ladder of rows: level k holds at i
// the largest of 2^k columns from i on, so that any number of columns takes two look-ups.
class LineMerger
{
public:
    explicit LineMerger(const std::vector<CellRange> &pixelColumns)
        : m_columns(hull(pixelColumns))
        , m_stride(m_columns.count())
        , m_lookUps(pixelColumns.size())
    {
        int widest = 1;
        for (const CellRange &range : pixelColumns)
            widest = std::max(widest, range.count());
        while (1 << m_levels <= widest)
            ++m_levels;
        m_ladder.resize(std::size_t(m_levels) * m_stride + 1);
        for (std::size_t p = 0; p < pixelColumns.size(); ++p)
            m_lookUps[p] = lookUps(pixelColumns[p]);
    }

    CellRange columns() const { return m_columns; }
    // Where the codes of these columns have to be put.
    Code *codes() { return m_ladder.data(); }

    // Writes the colours of the line.
    void write(const std::vector<unsigned int> &colors, unsigned int *line)
    {
        climb();
        const Code *ladder = m_ladder.data();
        const int pixels = int(m_lookUps.size());
        m_line.resize(m_lookUps.size());
        Code *merged = m_line.data();
        unsigned int seen = 0;
        for (int p = 0; p < pixels; ++p) {
            merged[p] = std::max(ladder[m_lookUps[p].first], ladder[m_lookUps[p].second]);
            seen = std::max(seen, unsigned(merged[p]));
        }
        // Throws, once for the line, what each of its pixels would have to ask for.
        static_cast<void>(colors.at(seen));
        const unsigned int *palette = colors.data();
        for (int p = 0; p < pixels; ++p)
            line[p] = palette[merged[p]];
    }

private:
    struct LookUps
    {
        unsigned int first;
        unsigned int second;
    };

    LookUps lookUps(const CellRange &range) const
    {
        const auto none = unsigned(m_ladder.size() - 1); // always 0
        if (range.count() == 0)
            return {none, none};
        int level = 0;
        while (2 << level <= range.count())
            ++level;
        const auto start = unsigned(level * m_stride - m_columns.first);
        return {start + unsigned(range.first), start + unsigned(range.end - (1 << level))};
    }

    void climb()
    {
        for (int level = 1; level < m_levels; ++level) {
            const int half = 1 << (level - 1);
            const Code *below = m_ladder.data() + std::size_t(level - 1) * m_stride;
            largerOf(below, below + half, m_ladder.data() + std::size_t(level) * m_stride,
                     m_stride - 2 * half + 1);
        }
    }

    CellRange m_columns;
    int m_stride;
    int m_levels = 0;
    std::vector<Code> m_ladder;
    std::vector<LookUps> m_lookUps;
    std::vector<Code> m_line;
};

// The largest codes, column by column, of several rows.
void mergeRows(const Heatmap &heatmap, const CellRange &rows, const CellRange &columns, Code *codes)
{
    std::fill_n(codes, columns.count(), Code(0));
    for (int r = rows.first; r < rows.end; ++r) {
        const std::size_t start = std::size_t(r) * heatmap.columnCount + std::size_t(columns.first);
        if (start >= heatmap.cells.size())
            break;
        const int count = int(std::min(heatmap.cells.size() - start, std::size_t(columns.count())));
        const Code *row = heatmap.cells.data() + start;
        if (r == rows.first)
            std::copy_n(row, count, codes);
        else
            largerOf(codes, row, codes, count);
    }
}

} // namespace

void rasterizeHeatmap(const Heatmap &heatmap, double topLevel, const PixelMapping &mapping,
                      const std::vector<unsigned int> &colors, const PixelBuffer &buffer)
{
    if (!mapping.isDrawable() || heatmap.columnCount == 0 || heatmap.rowCount == 0 ||
        heatmap.columnFrequencies.size() != heatmap.columnCount)
        return;
    LineMerger merger(coveringCells(columnEdges(heatmap, mapping), buffer.width, mapping.width() - 1.0));
    if (merger.columns().count() == 0)
        return;
    const std::vector<CellRange> lineRows =
        coveringCells(rowEdges(heatmap, topLevel, mapping), buffer.height, mapping.height() - 1.0);

    const std::size_t lineBytes = std::size_t(buffer.width) * sizeof(unsigned int);
    for (int line = 0; line < buffer.height; ++line) {
        if (lineRows[line].count() == 0)
            continue;
        unsigned int *pixels = buffer.pixels + std::size_t(line) * buffer.width;
        if (line > 0 && lineRows[line] == lineRows[line - 1]) {
            std::memcpy(pixels, pixels - buffer.width, lineBytes);
            continue;
        }
        mergeRows(heatmap, lineRows[line], merger.columns(), merger.codes());
        merger.write(colors, pixels);
    }
}

} // namespace graph
