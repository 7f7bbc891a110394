#include "plots/HeatmapRaster.h"

#include "plots/CellCover.h"
#include "plots/CodeColors.h"

#include <algorithm>
#include <array>
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
    double last = frequency(0);
    for (int c = 1; c < columns; ++c) {
        const double next = frequency(c);
        edges[c] = mapping.x((last + next) / 2.0);
        last = next;
    }
    edges[0] = mapping.x(frequency(0) - (frequency(1) - frequency(0)) / 2.0);
    edges[columns] = mapping.x(last + (last - frequency(columns - 2)) / 2.0);
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

// Lines that are worked on at once: their codes lie side by side, so that what is found for a pixel is found for all
// of them in the steps of one.
constexpr int lineCount = codeBlock;

// Of the same column in all these lines: a register.
using Codes = Code __attribute__((vector_size(lineCount)));

Codes larger(const Codes &a, const Codes &b)
{
    return a > b ? a : b;
}

// Columns that are interleaved at once. All that is in a line of the cache is read together: rows of some lengths take
// each other's places there.
constexpr int blockWidth = 64;

// Makes lines of columns and columns of lines. Each round shuffles all of them like two halves of a pack of cards;
// compilers do not find single instructions for that by themselves.
void transpose(Codes *blocks)
{
    for (int shuffled = 1; shuffled < lineCount; shuffled *= 2) {
        Codes next[lineCount];
        for (int i = 0; i < lineCount / 2; ++i) {
            const Codes a = blocks[i];
            const Codes b = blocks[i + lineCount / 2];
            next[std::size_t(2 * i)] =
                __builtin_shufflevector(a, b, 0, 16, 1, 17, 2, 18, 3, 19, 4, 20, 5, 21, 6, 22, 7, 23);
            next[std::size_t(2 * i + 1)] =
                __builtin_shufflevector(a, b, 8, 24, 9, 25, 10, 26, 11, 27, 12, 28, 13, 29, 14, 30, 15, 31);
        }
        std::memcpy(blocks, next, sizeof next);
    }
}

// Finds the largest codes among the columns of each pixel. Where the pixels have many columns in common, which files may
// have that are not in order, by a ladder of levels: level k holds at i the largest of 2^k columns from i on, so that
// any number of columns takes two look-ups.
class LineMerger
{
public:
    explicit LineMerger(const std::vector<CellRange> &pixelColumns)
        : m_columns(hull(pixelColumns))
        , m_stride(m_columns.count())
        , m_pixelColumns(pixelColumns)
    {
        qint64 reads = 0;
        int widest = 1;
        for (CellRange &range : m_pixelColumns) {
            if (range.count() > 0)
                range = {range.first - m_columns.first, range.end - m_columns.first};
            reads += range.count();
            widest = std::max(widest, range.count());
        }
        if (reads > 4 * (qint64(m_stride) + qint64(pixelColumns.size()))) {
            while (2 << m_highest <= widest)
                ++m_highest;
        }
        // With room for the rest of a block.
        m_ladder.resize(std::size_t(m_highest + 1) * m_stride + blockWidth);
        m_merged.resize(roundedUp(int(pixelColumns.size())));
    }

    CellRange columns() const { return m_columns; }

    // rows: the codes of the columns in each of so many lines.
    void merge(const std::array<const Code *, lineCount> &rows)
    {
        interleave(rows);
        climb();
        const int pixels = int(m_pixelColumns.size());
        Codes *merged = m_merged.data();
        Codes seen{};
        for (int p = 0; p < pixels; ++p) {
            merged[p] = largest(m_pixelColumns[p]);
            seen = larger(seen, merged[p]);
        }
        m_seen = 0;
        for (int line = 0; line < lineCount; ++line)
            m_seen = std::max(m_seen, Code(seen[line]));
        for (int p = 0; p < pixels; p += lineCount)
            transpose(merged + p);
    }

    // Writes the colours of one of the lines.
    void write(int line, const std::vector<unsigned int> &colors, unsigned int *pixels) const
    {
        // Throws, once for all lines, what each of their pixels would have to ask for.
        static_cast<void>(colors.at(m_seen));
        writeColors(reinterpret_cast<const Code *>(&m_merged[line]), lineCount * int(sizeof(Codes)),
                    int(m_pixelColumns.size()), colors, pixels);
    }

private:
    void interleave(const std::array<const Code *, lineCount> &rows)
    {
        for (int first = 0; first < m_stride; first += blockWidth) {
            const int count = std::min(blockWidth, m_stride - first);
            Codes block[blockWidth];
            for (int line = 0; line < lineCount; ++line) {
                Code rest[blockWidth];
                const Code *row = rows[line] + first;
                if (count < blockWidth) {
                    std::fill(std::copy_n(row, count, rest), rest + blockWidth, Code(0));
                    row = rest;
                }
                for (int k = 0; k < blockWidth; k += lineCount)
                    std::memcpy(&block[k + line], row + k, lineCount);
            }
            for (int k = 0; k < blockWidth; k += lineCount)
                transpose(block + k);
            std::memcpy(m_ladder.data() + first, block, sizeof block);
        }
    }

    static int roundedUp(int pixels) { return (pixels + lineCount - 1) / lineCount * lineCount; }

    void climb()
    {
        for (int level = 1; level <= m_highest; ++level) {
            const int half = 1 << (level - 1);
            const Codes *below = m_ladder.data() + std::size_t(level - 1) * m_stride;
            Codes *out = m_ladder.data() + std::size_t(level) * m_stride;
            for (int i = 0; i + 2 * half <= m_stride; ++i)
                out[i] = larger(below[i], below[i + half]);
        }
    }

    Codes largest(const CellRange &range) const
    {
        int level = 0;
        while (level < m_highest && 2 << level <= range.count())
            ++level;
        const Codes *codes = m_ladder.data() + std::size_t(level) * m_stride;
        if (level > 0)
            return larger(codes[range.first], codes[range.end - (1 << level)]);
        Codes all{};
        for (int i = range.first; i < range.end; ++i)
            all = larger(all, codes[i]);
        return all;
    }

    CellRange m_columns;
    int m_stride;
    int m_highest = 0;                     // level
    std::vector<CellRange> m_pixelColumns; // from the first of the columns on
    std::vector<Codes> m_ladder;
    std::vector<Codes> m_merged; // of each pixel, then of each line in turns of as many pixels
    Code m_seen = 0;             // the largest of them
};

// The largest codes, column by column, of several rows: where they lie, or in a buffer.
const Code *mergedRows(const Heatmap &heatmap, const CellRange &rows, const CellRange &columns, Code *buffer)
{
    const auto start = [&](int row) {
        return std::size_t(row) * heatmap.columnCount + std::size_t(columns.first);
    };
    const std::size_t size = heatmap.cells.size();
    if (rows.count() == 1 && start(rows.first) + std::size_t(columns.count()) <= size)
        return heatmap.cells.data() + start(rows.first);
    std::fill_n(buffer, columns.count(), Code(0));
    for (int r = rows.first; r < rows.end && start(r) < size; ++r) {
        const int count = int(std::min(size - start(r), std::size_t(columns.count())));
        largerOf(buffer, heatmap.cells.data() + start(r), buffer, count);
    }
    return buffer;
}

// Finds the codes of lines and writes their colours, as many lines at once as the merger takes.
class LineWriter
{
public:
    LineWriter(const Heatmap &heatmap, LineMerger &merger, const std::vector<unsigned int> &colors)
        : m_heatmap(heatmap)
        , m_merger(merger)
        , m_colors(colors)
        , m_buffer(std::size_t(lineCount) * merger.columns().count())
    {
    }

    void add(const CellRange &rows, unsigned int *pixels)
    {
        const CellRange columns = m_merger.columns();
        Code *buffer = m_buffer.data() + std::size_t(m_count) * columns.count();
        m_rows[m_count] = mergedRows(m_heatmap, rows, columns, buffer);
        m_pixels[m_count] = pixels;
        if (++m_count == lineCount)
            finish();
    }

    void finish()
    {
        if (m_count == 0)
            return;
        std::fill(m_rows.begin() + m_count, m_rows.end(), m_rows.front());
        m_merger.merge(m_rows);
        for (int line = 0; line < m_count; ++line)
            m_merger.write(line, m_colors, m_pixels[line]);
        m_count = 0;
    }

private:
    const Heatmap &m_heatmap;
    LineMerger &m_merger;
    const std::vector<unsigned int> &m_colors;
    std::vector<Code> m_buffer;
    std::array<const Code *, lineCount> m_rows{};
    std::array<unsigned int *, lineCount> m_pixels{};
    int m_count = 0;
};

// The columns of the heat map that each column of pixels shows; none where nothing can be drawn.
std::vector<CellRange> columnsOfPixels(const Heatmap &heatmap, const PixelMapping &mapping, int width)
{
    if (!mapping.isDrawable() || heatmap.columnCount == 0 || heatmap.rowCount == 0 ||
        heatmap.columnFrequencies.size() != heatmap.columnCount)
        return {};
    return coveringCells(columnEdges(heatmap, mapping), width, mapping.width() - 1.0);
}

} // namespace

void rasterizeHeatmap(const Heatmap &heatmap, double topLevel, const PixelMapping &mapping,
                      const std::vector<unsigned int> &colors, const PixelBuffer &buffer)
{
    std::vector<CellRange> lineRows(buffer.height);
    LineMerger merger(columnsOfPixels(heatmap, mapping, buffer.width));
    if (merger.columns().count() > 0)
        lineRows = coveringCells(rowEdges(heatmap, topLevel, mapping), buffer.height, mapping.height() - 1.0);

    const auto pixels = [&buffer](int line) { return buffer.pixels + std::size_t(line) * buffer.width; };
    const auto isRepeated = [&lineRows](int line) {
        return line > 0 && lineRows[line].count() > 0 && lineRows[line] == lineRows[line - 1];
    };
    LineWriter writer(heatmap, merger, colors);
    for (int line = 0; line < buffer.height; ++line) {
        if (lineRows[line].count() == 0)
            std::fill_n(pixels(line), buffer.width, 0u);
        else if (!isRepeated(line))
            writer.add(lineRows[line], pixels(line));
    }
    writer.finish();
    for (int line = 0; line < buffer.height; ++line) {
        if (isRepeated(line))
            std::memcpy(pixels(line), pixels(line - 1), std::size_t(buffer.width) * sizeof(unsigned int));
    }
}

} // namespace graph
