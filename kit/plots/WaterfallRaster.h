#pragma once

#include "common/PixelMapping.h"
#include "kit/plots/ColorMap.h"
#include "kit/plots/WaterfallRows.h"
#include "plots/CellCover.h"

#include <QImage>

#include <cmath>

namespace graph {

// Where the cells of a waterfall lie, in data units.
struct WaterfallPlace
{
    double start = 0.0; // x of the middle of the first column
    double interval = 1.0;
    double rowStep = -1.0; // y from the border of a row to that of the next older one; the newest begins at 0

    double columnEdge(int column) const { return start + (column - 0.5) * interval; }
    double rowEdge(int row) const { return row * rowStep; }

    // The column or row there, of so many; -1 where there is none.
    int columnAt(double x, int columns) const { return within(std::round((x - start) / interval), columns); }
    int rowAt(double y, int rows) const { return within(std::floor(y / rowStep), rows); }

private:
    static int within(double index, int count) { return index >= 0.0 && index < count ? int(index) : -1; }
};

// The levels of the first and of the last colour.
struct WaterfallLevels
{
    double from = -100.0;
    double to = 0.0;

    bool operator==(const WaterfallLevels &other) const { return from == other.from && to == other.to; }
};

// Turns rows of levels into pixels, the largest level of each winning. Rows that were turned before, for the
// same columns of pixels and the same levels, are kept, in a ring of their own: a new row costs one row. Where all of them
// would take too much memory, the older ones are turned each time.
class GRAPH_CHARTS_EXPORT WaterfallRaster
{
public:
    explicit WaterfallRaster(std::size_t mostPixels = std::size_t(1) << 26)
        : m_mostPixels(mostPixels)
    {
    }

    // The image, of the item's size, in the palette; transparent where there is no level. Null where that would
    // take too much memory.
    const QImage &image(const WaterfallRows &rows, const WaterfallPlace &place, const WaterfallLevels &levels,
                        const ColorMap &colors, const PixelMapping &mapping);

private:
    using Code = unsigned char; // 0 without a level, else 1 for the least, the more the greater

    void encodeNewRows(const WaterfallRows &rows, const WaterfallLevels &levels);
    void encode(const float *levels, Code *codes) const;
    const Code *codes(const WaterfallRows &rows, int age, std::vector<Code> &space);
    Code *kept(const WaterfallRows &rows, int age);
    void paintLine(const WaterfallRows &rows, const CellRange &lineRows, QRgb *line);

    std::size_t m_mostPixels;
    QImage m_image;
    std::vector<CellRange> m_columns; // of each pixel
    std::vector<Code> m_codes;
    std::vector<Code> m_line;
    std::vector<Code> m_nextLine;
    std::vector<QRgb> m_palette;
    WaterfallLevels m_levels;
    double m_low = 0.0;
    double m_scale = 1.0;
    qint64 m_encoded = 0; // the number of the newest row in m_codes
    int m_slots = 0;
};

} // namespace graph
