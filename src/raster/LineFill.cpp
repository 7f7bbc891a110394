#include "raster/LineFill.h"

#include "raster/OutlineFill.h"
#include "raster/PixelFill.h"
#include "raster/RowEdge.h"

#include <QPainter>
#include <QPainterPath>
#include <QPen>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace graph {

namespace {

constexpr int mostCorners = 6;

// The edges on one side of a piece, from top to bottom.
class Side
{
public:
    void add(const RowEdge &edge)
    {
        int i = m_count++;
        for (; i > 0 && m_edges[i - 1].row > edge.row; --i)
            m_edges[i] = m_edges[i - 1];
        m_edges[i] = edge;
    }

    bool isEmpty() const { return m_count == 0; }
    int top() const { return m_edges[0].row; }
    int end() const { return m_edges[m_count - 1].end; }
    // Whether there is one edge in each row.
    bool isChain() const
    {
        for (int i = 1; i < m_count; ++i) {
            if (m_edges[i].row != m_edges[i - 1].end)
                return false;
        }
        return true;
    }
    RowEdge *edges() { return m_edges.data(); }

private:
    std::array<RowEdge, mostCorners> m_edges;
    int m_count = 0;
};

// Convex; its corners go around it clockwise.
struct Piece
{
    std::array<GridPoint, mostCorners> corners;
    int count = 0;

    void add(const GridPoint &corner) { corners[count++] = corner; }
};

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
    bool fill(const Piece &piece)
    {
        if (isOutside(piece))
            return true;
        Side left;
        Side right;
        GridPoint last = piece.corners[piece.count - 1];
        for (int i = 0; i < piece.count; ++i) {
            const RowEdge edge = rowEdge(last, piece.corners[i], m_clip.top(), m_clip.bottom());
            last = piece.corners[i];
            if (!edge.isEmpty())
                (edge.winding < 0 ? left : right).add(edge);
        }
        if (left.isEmpty() && right.isEmpty())
            return true;
        return areBeside(left, right) && fillBetween(left.edges(), right.edges(), left.end());
    }

private:
    static bool areBeside(const Side &left, const Side &right)
    {
        return !left.isEmpty() && !right.isEmpty() && left.top() == right.top() &&
               left.end() == right.end() && left.isChain() && right.isChain();
    }

    bool isOutside(const Piece &piece) const
    {
        GridPoint low = piece.corners[0];
        GridPoint high = low;
        for (int i = 1; i < piece.count; ++i) {
            const GridPoint corner = piece.corners[i];
            low.x = std::min(low.x, corner.x);
            low.y = std::min(low.y, corner.y);
            high.x = std::max(high.x, corner.x);
            high.y = std::max(high.y, corner.y);
        }
        constexpr int bits = GridPoint::bits;
        return high.x >> bits < m_clip.x() || low.x >> bits > m_clipEnd || high.y >> bits < m_clip.top() ||
               low.y >> bits > m_clip.bottom() + 1;
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

// Cuts a line into convex pieces: one along each way from point to point, and what the joints add to them outside.
// At a joint a piece ends in two edges that meet in the point, because the engine's outline leads through it inside.
class Pieces
{
public:
    explicit Pieces(double width)
        : m_reach(width / 2.0)
    {
    }

    std::vector<Piece> taken;

    void moveTo(const QPointF &point)
    {
        finish();
        m_point = point;
    }

    void lineTo(const QPointF &point)
    {
        const QPointF way = point - m_point;
        if (way.isNull())
            return;
        const QPointF side = QPointF(way.y(), -way.x()) * (m_reach / std::hypot(way.x(), way.y()));
        const GridPoint middle(m_point);
        const GridPoint left(m_point + side);
        const GridPoint right(m_point - side);
        const bool goesOn = m_piece.count > 0;
        if (goesOn) {
            finishPiece(&middle);
            addJoint(side, middle, left, right);
        }
        m_piece.count = 0;
        m_piece.add(right);
        if (goesOn)
            m_piece.add(middle);
        m_piece.add(left);
        m_point = point;
        m_side = side;
    }

    void finish()
    {
        if (m_piece.count > 0)
            finishPiece(nullptr);
        m_piece.count = 0;
    }

private:
    // middle: of its end where the line goes on.
    void finishPiece(const GridPoint *middle)
    {
        m_left = GridPoint(m_point + m_side);
        m_right = GridPoint(m_point - m_side);
        m_piece.add(m_left);
        if (middle)
            m_piece.add(*middle);
        m_piece.add(m_right);
        taken.push_back(m_piece);
    }

    void addJoint(const QPointF &side, const GridPoint &middle, const GridPoint &left, const GridPoint &right)
    {
        const double turn = m_side.x() * side.y() - m_side.y() * side.x();
        if (turn > 0.0)
            taken.push_back({{middle, m_left, left}, 3});
        else if (turn < 0.0)
            taken.push_back({{middle, right, m_right}, 3});
    }

    double m_reach;
    QPointF m_point;
    QPointF m_side;   // from the line to its left edge, seen along it
    Piece m_piece;    // that leads to the point, but for its end
    GridPoint m_left; // the end of the one before
    GridPoint m_right;
};

std::vector<Piece> piecesOf(const QPainterPath &path, const QPoint &offset, int width)
{
    Pieces pieces(width);
    const int count = path.elementCount();
    pieces.taken.reserve(2 * std::size_t(count));
    for (int i = 0; i < count; ++i) {
        const QPainterPath::Element element = path.elementAt(i);
        const QPointF point = QPointF(element) + offset;
        if (element.isMoveTo())
            pieces.moveTo(point);
        else
            pieces.lineTo(point);
    }
    pieces.finish();
    return std::move(pieces.taken);
}

} // namespace

bool leadsRight(const QPainterPath &path)
{
    for (int i = 1; i < path.elementCount(); ++i) {
        if (path.elementAt(i).x < path.elementAt(i - 1).x)
            return false;
    }
    return true;
}

bool isOfSeparateLines(const QPainterPath &path)
{
    for (int i = 0; i < path.elementCount(); ++i) {
        if (path.elementAt(i).isMoveTo() != (i % 2 == 0))
            return false;
    }
    return true;
}

bool isQuickInRows(const QPainterPath &path, int width)
{
    const int count = path.elementCount();
    double rows = 0.0;
    for (int i = 1; i < count; ++i) {
        if (!path.elementAt(i).isMoveTo())
            rows += std::abs(path.elementAt(i).y - path.elementAt(i - 1).y);
    }
    // Instructions that one way takes more than the other, as they were counted.
    const double columns = path.elementAt(count - 1).x - path.elementAt(0).x;
    return rows * (26.0 + 1.6 * width) <= columns * 700.0 + count * (600.0 + 90.0 * width);
}

bool paintLine(QPainter *painter, const QRegion &region, const QPainterPath &path, const QPen &pen)
{
    const std::optional<WritablePixels> pixels = writablePixels(painter, pen.color());
    if (!pixels || !leadsRight(path) || isOfSeparateLines(path))
        return false;
    const std::vector<Piece> pieces = piecesOf(path, pixels->offset, pen.width());
    for (const QRect &part : region) {
        const QRect clip = part & pixels->rect;
        PieceFill fill(*pixels, clip, pen.color().rgba());
        if (clip.isEmpty() || std::all_of(pieces.begin(), pieces.end(),
                                          [&fill](const Piece &piece) { return fill.fill(piece); }))
            continue;
        QVector<QRect> rectangles = strokedRectangles(path, pen.width(), pixels->offset, clip);
        for (QRect &rectangle : rectangles)
            rectangle.translate(-pixels->offset);
        fillPixels(painter, clip, rectangles, pen.color());
    }
    return true;
}

} // namespace graph
