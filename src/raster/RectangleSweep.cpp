#include "raster/RectangleSweep.h"

#include <algorithm>

namespace graph {

void RectangleSweep::add(int column, const Rows &rows)
{
    if (rows.isEmpty())
        return;
    if (m_first != m_end) {
        if (column == m_column) {
            m_rectangles.append(QRect(column, rows.top, 1, rows.count()));
            return;
        }
        if (column == m_column + 1) {
            closeAbove(rows.top);
            closeBelow(rows.end);
        } else {
            closeAll();
        }
    }
    m_column = column;
    if (m_first == m_end) {
        begin({rows, column});
        return;
    }
    if (m_first == 0 || m_end == m_open.size())
        grow();
    const int top = m_open[m_first].rows.top;
    const int end = m_open[m_end - 1].rows.end;
    if (rows.top < top)
        m_open[--m_first] = {{rows.top, top}, column};
    if (rows.end > end)
        m_open[m_end++] = {{end, rows.end}, column};
}

QVector<QRect> RectangleSweep::takeRectangles()
{
    closeAll();
    QVector<QRect> rectangles;
    rectangles.swap(m_rectangles);
    return rectangles;
}

void RectangleSweep::begin(const Piece &piece)
{
    m_first = m_open.size() / 2;
    m_end = m_first + 1;
    m_open[m_first] = piece;
}

// Makes room at both ends.
void RectangleSweep::grow()
{
    const std::size_t count = m_end - m_first;
    m_open.resize(std::max(m_open.size(), 4 * count));
    const std::size_t first = (m_open.size() - count) / 2;
    Piece *open = m_open.data();
    if (first < m_first)
        std::copy(open + m_first, open + m_end, open + first);
    else
        std::copy_backward(open + m_first, open + m_end, open + first + count);
    m_first = first;
    m_end = first + count;
}

inline void RectangleSweep::close(const Rows &rows, int left)
{
    m_rectangles.append(QRect(left, rows.top, m_column + 1 - left, rows.count()));
}

void RectangleSweep::closeAll()
{
    for (; m_first != m_end; ++m_first)
        close(m_open[m_first].rows, m_open[m_first].left);
}

inline void RectangleSweep::closeAbove(int row)
{
    for (; m_first != m_end && m_open[m_first].rows.top < row; ++m_first) {
        Piece &piece = m_open[m_first];
        if (piece.rows.end > row) {
            close({piece.rows.top, row}, piece.left);
            piece.rows.top = row;
            return;
        }
        close(piece.rows, piece.left);
    }
}

inline void RectangleSweep::closeBelow(int row)
{
    for (; m_first != m_end && m_open[m_end - 1].rows.end > row; --m_end) {
        Piece &piece = m_open[m_end - 1];
        if (piece.rows.top < row) {
            close({row, piece.rows.end}, piece.left);
            piece.rows.end = row;
            return;
        }
        close(piece.rows, piece.left);
    }
}

} // namespace graph
