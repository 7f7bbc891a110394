#include "raster/ColumnCover.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <limits>

namespace graph {

namespace {

constexpr int onePixel = 1 << RowEdge::bits;

// Rows of columns, so many of which fill a register.
constexpr int blockSize = 8;
using Block = qint16 __attribute__((vector_size(blockSize * sizeof(qint16))));

Block blockAt(const qint16 *rows)
{
    Block block;
    std::memcpy(&block, rows, sizeof block);
    return block;
}

void setBlock(qint16 *rows, const Block &block)
{
    std::memcpy(rows, &block, sizeof block);
}

Block chosen(const Block &where, const Block &block, const Block &other)
{
    return (where & block) | (~where & other);
}

bool isAny(const Block &where)
{
    quint64 halves[2];
    static_assert(sizeof halves == sizeof where, "a register");
    std::memcpy(halves, &where, sizeof halves);
    return (halves[0] | halves[1]) != 0;
}

// Of a column without a run.
constexpr qint16 noTop = std::numeric_limits<qint16>::max();
constexpr qint16 noEnd = std::numeric_limits<qint16>::min();

// Whether all columns between two corners have all of the rows top..bottom-1, or there are none.
bool isLevel(const GridPoint &from, const GridPoint &to, int top, int bottom)
{
    const int row = from.row();
    return (row == to.row() && (row == top || row == bottom)) || from.column() == to.column();
}

} // namespace

ColumnCover::Runs::Runs(int columns)
    : tops(columns + blockSize, noTop)
    , ends(columns + blockSize, noEnd)
{
}

ColumnCover::ColumnCover(const QRect &clip)
    : m_clip(clip)
    , m_runs(clip.width())
    , m_piece(clip.width())
{
}

bool ColumnCover::add(const LinePiece &piece)
{
    if (piece.isSlim)
        return addRowByRow(piece);
    const int top = piece.low.row();
    const int bottom = piece.high.row();
    const Rows rows{std::max(top - m_clip.top(), 0), std::min(bottom - m_clip.top(), m_clip.height())};
    const int first = inside(piece.low.column());
    const int end = inside(piece.high.column());
    if (rows.isEmpty() || first >= end)
        return true;
    begin(first, end, rows);
    GridPoint last = piece.corners[piece.count - 1];
    for (int i = 0; i < piece.count; ++i) {
        const GridPoint corner = piece.corners[i];
        if (!isLevel(last, corner, top, bottom) && !follow(last, corner))
            return false;
        last = corner;
    }
    unite(first, end);
    return true;
}

bool ColumnCover::addRowByRow(const LinePiece &piece)
{
    const PieceSides sides(piece, m_clip.top(), m_clip.bottom());
    if (sides.areEmpty())
        return true;
    if (!sides.areBeside())
        return false;
    const RowEdge *left = sides.left.begin();
    const RowEdge *right = sides.right.begin();
    for (int row = left->row; row < sides.left.end(); ++row) {
        if (left->end == row)
            ++left;
        if (right->end == row)
            ++right;
        if (left->columnAt(row) > right->columnAt(row))
            return false;
        const int first = inside(left->columnAt(row));
        const int end = inside(right->columnAt(row));
        if (first == end)
            continue;
        begin(first, end, {row - m_clip.top(), row + 1 - m_clip.top()});
        unite(first, end);
    }
    return true;
}

// Above a piece its edges lead to the right: they give each column the row from which it is inside, and those below it
// the one from which it no longer is. False where rounding leads an edge beyond its lower corner.
bool ColumnCover::follow(const GridPoint &from, const GridPoint &to)
{
    qint16 *rows = (to.x > from.x ? m_piece.tops : m_piece.ends).data();
    const GridPoint upper = to.y < from.y ? to : from;
    const GridPoint lower = to.y < from.y ? from : to;
    int column = inside(upper.column());
    const auto goTo = [&](int next, int row) {
        next = inside(next);
        while (column < next)
            rows[column++] = qint16(row - m_clip.top());
        while (column > next)
            rows[--column] = qint16(row - m_clip.top());
    };

    const RowEdge edge = rowEdge(upper, lower, m_clip.top(), m_clip.bottom());
    if (!edge.isEmpty()) {
        const int last = edge.columnAt(edge.end - 1);
        if (last < std::min(upper.column(), lower.column()))
            return false;
        goTo(edge.column(), edge.row);
        // Those that lead to the left are followed in a mirror: which way comes next is what no processor can guess.
        const int mirror = edge.step < 0 ? -1 : 0;
        const qint64 step = (edge.step ^ mirror) - mirror;
        qint64 position = edge.position ^ mirror;
        const int end = last ^ mirror;
        int at = (column ^ mirror) - mirror;
        // Steep ones stay in a column for many rows.
        const bool isSteep = step < onePixel;
        int row = edge.row;
        for (auto next = int(position >> RowEdge::bits); next != end;) {
            int count = 1;
            if (isSteep)
                count = int((onePixel - 1 - quint32(position & (onePixel - 1))) / quint32(step)) + 1;
            row += count;
            position += count * step;
            next = int(position >> RowEdge::bits);
            const int border = (inside((next ^ mirror)) ^ mirror) - mirror;
            for (; at < border; ++at)
                rows[at ^ mirror] = qint16(row - m_clip.top());
        }
        column = (at ^ mirror) - mirror;
    }
    goTo(lower.column(), qBound(m_clip.top(), lower.row(), m_clip.bottom() + 1));
    return true;
}

void ColumnCover::begin(int first, int end, const Rows &rows)
{
    for (int column = first; column < end; column += blockSize) {
        setBlock(m_piece.tops.data() + column, Block{} + qint16(rows.top));
        setBlock(m_piece.ends.data() + column, Block{} + qint16(rows.end));
    }
}

void ColumnCover::unite(int first, int end)
{
    // Rows that were just written one by one are not read quickly as a block.
    constexpr int few = 4;
    if (end - first <= few) {
        uniteEach(first, end);
        return;
    }
    setBlock(m_piece.tops.data() + end, Block{} + noTop);
    setBlock(m_piece.ends.data() + end, Block{} + noEnd);
    for (int column = first; column < end; column += blockSize) {
        const Block addedTops = blockAt(m_piece.tops.data() + column);
        const Block addedEnds = blockAt(m_piece.ends.data() + column);
        const Block tops = blockAt(m_runs.tops.data() + column);
        const Block ends = blockAt(m_runs.ends.data() + column);
        const Block areApart =
            ((addedTops > ends) | (tops > addedEnds)) & (ends != noEnd) & (addedEnds != noEnd);
        if (isAny(areApart)) {
            uniteEach(column, std::min(column + blockSize, end));
            continue;
        }
        setBlock(m_runs.tops.data() + column, chosen(tops < addedTops, tops, addedTops));
        setBlock(m_runs.ends.data() + column, chosen(ends > addedEnds, ends, addedEnds));
    }
}

void ColumnCover::uniteEach(int first, int end)
{
    for (int column = first; column < end; ++column) {
        const Rows added = m_piece.at(column);
        Rows rows = m_runs.at(column);
        if (added.isEmpty())
            continue;
        if (rows.isEmpty())
            rows = added;
        else if (rows.touches(added))
            rows.unite(added);
        else
            m_apart.push_back({column, added});
        m_runs.tops[column] = qint16(rows.top);
        m_runs.ends[column] = qint16(rows.end);
    }
}

QVector<QRect> ColumnCover::rectangles()
{
    for (const Apart &apart : std::vector<Apart>(m_apart))
        m_apart.push_back({apart.column, m_runs.at(apart.column)});
    std::sort(m_apart.begin(), m_apart.end());
    RectangleSweep sweep;
    const auto add = [&](int column, const Rows &rows) {
        sweep.add(m_clip.left() + column, {m_clip.top() + rows.top, m_clip.top() + rows.end});
    };
    auto apart = m_apart.cbegin();
    for (int column = 0; column < m_clip.width(); ++column) {
        Rows rows = m_runs.at(column);
        if (apart != m_apart.cend() && apart->column == column)
            rows = apart->rows;
        for (; apart != m_apart.cend() && apart->column == column; ++apart) {
            if (!rows.touches(apart->rows)) {
                add(column, rows);
                rows = apart->rows;
            }
            rows.unite(apart->rows);
        }
        add(column, rows);
    }
    return sweep.takeRectangles();
}

} // namespace graph
