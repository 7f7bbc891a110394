#include "raster/LineFill.h"

#include "raster/LinePieces.h"
#include "raster/OutlineFill.h"
#include "raster/PixelFill.h"

#include <QPainter>
#include <QPen>

#include <algorithm>
#include <vector>

namespace graph {

namespace {

class PieceFill
{
public:
    PieceFill(const WritablePixels &pixels, const QRect &clip, QRgb color)
        : m_pixels(pixels)
        , m_clip(clip)
        , m_clipEnd(clip.x() + clip.width())
        , m_color(color)
    {
    }

    // False where rounding has turned it inside out.
    bool fill(const LinePiece &piece)
    {
        if (isOutside(piece))
            return true;
        PieceSides sides(piece, m_clip.top(), m_clip.bottom());
        return sides.areEmpty() ||
               (sides.areBeside() && fillBetween(sides.left.begin(), sides.right.begin(), sides.left.end()));
    }

private:
    bool isOutside(const LinePiece &piece) const
    {
        constexpr int bits = GridPoint::bits;
        return piece.high.x >> bits < m_clip.x() || piece.low.x >> bits > m_clipEnd ||
               piece.high.y >> bits < m_clip.top() || piece.low.y >> bits > m_clip.bottom() + 1;
    }

    bool fillBetween(RowEdge *left, RowEdge *right, int end)
    {
        uchar *line = m_pixels.bits + left->row * m_pixels.bytesPerLine;
        for (int row = left->row; row < end;) {
            const int rows = std::min(left->end, right->end) - row;
            if (!fillRows(line, *left, *right, rows))
                return false;
            row += rows;
            line += rows * m_pixels.bytesPerLine;
            if (left->end == row)
                ++left;
            if (right->end == row)
                ++right;
        }
        return true;
    }

    bool fillRows(uchar *line, RowEdge &left, RowEdge &right, int rows) const
    {
        const auto isInside = [this, rows](const RowEdge &edge) {
            const qint64 last = (edge.position + (rows - 1) * edge.step) >> RowEdge::bits;
            return edge.column() >= m_clip.x() && edge.column() <= m_clipEnd && last >= m_clip.x() &&
                   last <= m_clipEnd;
        };
        const bool isWhole = isInside(left) && isInside(right);
        for (int i = 0; i < rows; ++i, line += m_pixels.bytesPerLine) {
            qint64 from = left.position >> RowEdge::bits;
            qint64 to = right.position >> RowEdge::bits;
            left.position += left.step;
            right.position += right.step;
            if (to <= from) {
                if (to < from)
                    return false;
                continue;
            }
            if (!isWhole) {
                from = std::max<qint64>(from, m_clip.x());
                to = std::min<qint64>(to, m_clipEnd);
                if (to <= from)
                    continue;
            }
            fillRow(line + from * qsizetype(sizeof(QRgb)), int(to - from), m_color);
        }
        return true;
    }

    WritablePixels m_pixels;
    QRect m_clip;
    int m_clipEnd;
    QRgb m_color;
};

std::vector<LinePiece> piecesOf(const LinePoints &points, const QPoint &offset, int width)
{
    std::vector<LinePiece> pieces;
    pieces.reserve(2 * std::size_t(points.size()));
    LinePieces(width, [&pieces](const LinePiece &piece) { pieces.push_back(piece); }).add(points, offset);
    return pieces;
}

} // namespace

bool isQuickInRows(const LinePoints &points, int width)
{
    // Instructions that one way takes more than the other, as they were counted.
    return points.rowsPassed() * (28.0 + 2.0 * width) <=
           points.width() * (420.0 + 33.0 * width) + points.size() * 35.0 * width;
}

bool haveKnownPixels(const LinePoints &points)
{
    return points.leadRight() && !points.areSeparateLines();
}

bool paintLine(QPainter *painter, const QRegion &region, const LinePoints &points, const QPen &pen)
{
    const std::optional<WritablePixels> pixels = writablePixels(painter, pen.color());
    if (!pixels)
        return false;
    const std::vector<LinePiece> pieces = piecesOf(points, pixels->offset, pen.width());
    for (const QRect &part : region) {
        const QRect clip = part & pixels->rect;
        PieceFill fill(*pixels, clip, pen.color().rgba());
        if (clip.isEmpty() || std::all_of(pieces.begin(), pieces.end(),
                                          [&fill](const LinePiece &piece) { return fill.fill(piece); }))
            continue;
        QVector<QRect> rectangles = strokedRectangles(points, pen.width(), pixels->offset, clip);
        for (QRect &rectangle : rectangles)
            rectangle.translate(-pixels->offset);
        fillPixels(painter, clip, rectangles, pen.color());
    }
    return true;
}

} // namespace graph
