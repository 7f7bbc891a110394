#pragma once

#include "raster/LinePoints.h"
#include "raster/RowEdge.h"

#include <array>
#include <cmath>
#include <vector>

namespace graph {

// A convex part of a line; its corners go around it clockwise.
struct LinePiece
{
    static constexpr int mostCorners = 6;

    std::array<GridPoint, mostCorners> corners;
    int count = 0;
    bool isSlim = false; // so that rounding may turn it inside out
    GridPoint low;       // the least coordinates of corners
    GridPoint high;      // the greatest

    void add(const GridPoint &corner) { corners[count++] = corner; }

    // To those of these corners, with all others between them.
    void setBounds(const GridPoint &a, const GridPoint &b, const GridPoint &c, const GridPoint &d)
    {
        low.x = std::min(std::min(a.x, b.x), std::min(c.x, d.x));
        low.y = std::min(std::min(a.y, b.y), std::min(c.y, d.y));
        high.x = std::max(std::max(a.x, b.x), std::max(c.x, d.x));
        high.y = std::max(std::max(a.y, b.y), std::max(c.y, d.y));
    }
};

// The edges on one side of a piece, from top to bottom.
class PieceSide
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
    int count() const { return m_count; }
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
    RowEdge *begin() { return m_edges.data(); }
    const RowEdge *begin() const { return m_edges.data(); }

private:
    std::array<RowEdge, LinePiece::mostCorners> m_edges;
    int m_count = 0;
};

struct PieceSides
{
    // Within the rows top to bottom.
    PieceSides(const LinePiece &piece, int top, int bottom)
    {
        GridPoint last = piece.corners[piece.count - 1];
        int lastRow = last.row();
        for (int i = 0; i < piece.count; ++i) {
            const GridPoint corner = piece.corners[i];
            const int row = corner.row();
            // Most edges at ends and joints have no row.
            if (row != lastRow) {
                const RowEdge edge = rowEdge(last, corner, top, bottom);
                if (!edge.isEmpty())
                    (row < lastRow ? left : right).add(edge);
            }
            last = corner;
            lastRow = row;
        }
    }

    bool areEmpty() const { return left.isEmpty() && right.isEmpty(); }
    // Whether each row that has one has both; rounding may turn a piece inside out.
    bool areBeside() const
    {
        return !left.isEmpty() && !right.isEmpty() && left.top() == right.top() &&
               left.end() == right.end() && left.isChain() && right.isChain();
    }

    PieceSide left;
    PieceSide right;
};

// Cuts a line into convex pieces: one along each way from point to point, and what the joints add to them outside.
// At a joint a piece ends in two edges that meet in the point, because the engine's outline leads through it inside.
// take(piece) is called for each of them.
template <typename Take> class LinePieces
{
public:
    LinePieces(double width, Take take)
        : m_reach(width / 2.0)
        , m_take(take)
    {
    }

    void add(const LinePoints &points, const QPointF &offset)
    {
        for (std::size_t i = 0; i < points.lineCount(); ++i) {
            const QPointF *first = points.beginOfLine(i);
            const auto ways = std::size_t(points.endOfLine(i) - first) - 1;
            findScales(first, ways, offset);
            m_point = *first + offset;
            for (std::size_t way = 0; way < ways; ++way)
                lineTo(first[way + 1] + offset, m_scales[way]);
            finish();
        }
    }

private:
    // Of all ways at once: a processor works on several roots at a time where none waits for what becomes of the one before.
    void findScales(const QPointF *point, std::size_t ways, const QPointF &offset)
    {
        m_scales.resize(ways);
        for (std::size_t i = 0; i < ways; ++i) {
            const QPointF way = (point[i + 1] + offset) - (point[i] + offset);
            m_scales[i] = m_reach / std::sqrt(way.x() * way.x() + way.y() * way.y());
        }
    }

    // scale: from the way to the way from it to its edge.
    void lineTo(const QPointF &point, double scale)
    {
        const QPointF way = point - m_point;
        if (way.isNull())
            return;
        const QPointF side = QPointF(way.y(), -way.x()) * scale;
        const GridPoint middle(m_point);
        const GridPoint left(m_point + side);
        const GridPoint right(m_point - side);
        const bool goesOn = m_piece.count > 0;
        if (goesOn) {
            finishPiece(&middle);
            addJoint(side, middle, left, right);
        }
        m_piece.count = 0;
        m_piece.isSlim = scale > m_reach; // shorter than a pixel
        m_piece.add(right);
        if (goesOn)
            m_piece.add(middle);
        m_piece.add(left);
        m_beginLeft = left;
        m_point = point;
        m_side = side;
    }

    void finish()
    {
        if (m_piece.count > 0)
            finishPiece(nullptr);
        m_piece.count = 0;
    }

    // middle: of its end where the line goes on.
    void finishPiece(const GridPoint *middle)
    {
        m_left = GridPoint(m_point + m_side);
        m_right = GridPoint(m_point - m_side);
        m_piece.add(m_left);
        if (middle)
            m_piece.add(*middle);
        m_piece.add(m_right);
        m_piece.setBounds(m_piece.corners[0], m_beginLeft, m_left, m_right);
        m_take(m_piece);
    }

    void addJoint(const QPointF &side, const GridPoint &middle, const GridPoint &left, const GridPoint &right)
    {
        const double turn = m_side.x() * side.y() - m_side.y() * side.x();
        if (turn > 0.0)
            takeJoint(middle, m_left, left);
        else if (turn < 0.0)
            takeJoint(middle, right, m_right);
    }

    void takeJoint(const GridPoint &middle, const GridPoint &from, const GridPoint &to)
    {
        // Most are so small that they have no row.
        if (from.row() == middle.row() && to.row() == middle.row())
            return;
        LinePiece piece;
        piece.isSlim = true;
        piece.add(middle);
        piece.add(from);
        piece.add(to);
        piece.setBounds(middle, from, to, to);
        m_take(piece);
    }

    double m_reach;
    Take m_take;
    std::vector<double> m_scales;
    QPointF m_point;
    QPointF m_side;    // from the line to its left edge, seen along it
    LinePiece m_piece; // that leads to the point, but for its end
    GridPoint m_beginLeft;
    GridPoint m_left; // the end of the one before
    GridPoint m_right;
};

} // namespace graph
