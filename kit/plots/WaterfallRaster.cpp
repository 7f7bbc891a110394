#include "kit/plots/WaterfallRaster.h"

#include "common/SafeInteger.h"

#include <cmath>
#include <cstring>
#include <limits>

namespace graph {

namespace {

constexpr qint64 largestPicture = qint64(1) << 28; // pixels, 1 GiB

template <typename EdgeAt> std::vector<double> edges(int cells, EdgeAt edgeAt)
{
    std::vector<double> result(std::size_t(cells) + 1);
    for (int i = 0; i <= cells; ++i)
        result[std::size_t(i)] = edgeAt(i);
    return result;
}

// By code; where `from` is the greater level, the greatest has the first colour.
std::vector<QRgb> paletteOf(const ColorMap &colors, const WaterfallLevels &levels)
{
    std::vector<QRgb> palette{0};
    palette.insert(palette.end(), colors.begin(), colors.end());
    if (levels.from > levels.to)
        std::reverse(palette.begin() + 1, palette.end());
    return palette;
}

} // namespace

const QImage &WaterfallRaster::image(const WaterfallRows &rows, const WaterfallPlace &place,
                                     const WaterfallLevels &levels, const ColorMap &colors,
                                     const PixelMapping &mapping)
{
    const QSize size(pixel(std::ceil(mapping.width())), pixel(std::ceil(mapping.height())));
    const bool isPossible = qint64(size.width()) * size.height() <= largestPicture;
    if (m_image.size() != size)
        m_image = isPossible ? QImage(size, QImage::Format_ARGB32_Premultiplied) : QImage();
    if (m_image.isNull())
        return m_image;
    std::vector<CellRange> columns =
        coveringCells(edges(rows.columns(), [&](int i) { return mapping.x(place.columnEdge(i)); }),
                      size.width(), mapping.width() - 1.0);
    const int ringSize =
        int(std::min(std::size_t(rows.ringSize()), std::max<std::size_t>(1, m_mostPixels / columns.size())));
    if (!(columns == m_columns) || !(levels == m_levels) || m_slots != ringSize) {
        m_columns.swap(columns);
        m_levels = levels;
        m_slots = ringSize;
        m_encoded = 0;
    }
    encodeNewRows(rows, levels);
    m_palette = paletteOf(colors, levels);

    const std::vector<CellRange> lines =
        coveringCells(edges(rows.count(), [&](int i) { return mapping.y(place.rowEdge(i)); }), size.height(),
                      mapping.height() - 1.0);
    for (int line = 0; line < size.height(); ++line) {
        auto *pixels = reinterpret_cast<QRgb *>(m_image.scanLine(line));
        const CellRange &lineRows = lines[std::size_t(line)];
        if (lineRows.count() == 0)
            std::fill_n(pixels, size.width(), 0u);
        else if (line > 0 && lineRows == lines[std::size_t(line) - 1])
            std::memcpy(pixels, m_image.constScanLine(line - 1), std::size_t(size.width()) * sizeof(QRgb));
        else
            paintLine(rows, lineRows, pixels);
    }
    return m_image;
}

void WaterfallRaster::encodeNewRows(const WaterfallRows &rows, const WaterfallLevels &levels)
{
    m_codes.resize(std::size_t(rows.count() == 0 ? 0 : m_slots) * m_columns.size());
    m_low = std::min(levels.from, levels.to);
    const double span = std::abs(levels.to - levels.from);
    m_scale = span > 0.0 ? (colorMapSize - 1) / span : std::numeric_limits<double>::infinity();
    const qint64 newRows = std::min<qint64>(rows.added() - m_encoded, std::min(rows.count(), m_slots));
    m_encoded = rows.added();
    for (int age = 0; age < newRows; ++age)
        encode(rows.row(age), kept(rows, age));
}

void WaterfallRaster::encode(const float *levels, Code *codes) const
{
    constexpr float none = -std::numeric_limits<float>::infinity();
    const auto low = float(m_low);
    const auto scale = float(m_scale);
    for (std::size_t p = 0; p < m_columns.size(); ++p) {
        float largest = none;
        for (int c = m_columns[p].first; c < m_columns[p].end; ++c)
            largest = levels[c] > largest ? levels[c] : largest;
        const float place = (largest - low) * scale;
        // Where both ends are one level, 0 times infinity is the upper one.
        const float bounded = place < 0.0f ? 0.0f : place < colorMapSize - 1.0f ? place : colorMapSize - 1.0f;
        codes[p] = largest == none ? Code(0) : Code(1.5f + bounded);
    }
}

WaterfallRaster::Code *WaterfallRaster::kept(const WaterfallRows &rows, int age)
{
    return m_codes.data() + std::size_t((rows.added() - age) % m_slots) * m_columns.size();
}

const WaterfallRaster::Code *WaterfallRaster::codes(const WaterfallRows &rows, int age,
                                                    std::vector<Code> &space)
{
    if (age < m_slots)
        return kept(rows, age);
    space.resize(m_columns.size());
    encode(rows.row(age), space.data());
    return space.data();
}

void WaterfallRaster::paintLine(const WaterfallRows &rows, const CellRange &lineRows, QRgb *line)
{
    const int width = int(m_columns.size());
    const Code *merged = codes(rows, lineRows.first, m_line);
    if (lineRows.count() > 1) {
        m_line.resize(m_columns.size());
        for (int row = lineRows.first + 1; row < lineRows.end; ++row) {
            largerOf(merged, codes(rows, row, m_nextLine), m_line.data(), width);
            merged = m_line.data();
        }
    }
    const QRgb *palette = m_palette.data();
    for (int p = 0; p < width; ++p)
        line[p] = palette[merged[p]];
}

} // namespace graph
