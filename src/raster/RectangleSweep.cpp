#include "raster/RectangleSweep.h"

namespace graph {

void RectangleSweep::add(int column, const Rows &rows)
{
    if (rows.isEmpty())
        return;
    if (!m_open.empty()) {
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
    if (m_open.empty()) {
        m_open.push_back({rows, column});
        return;
    }
    const int top = m_open.front().rows.top;
    const int end = m_open.back().rows.end;
    if (rows.top < top)
        m_open.push_front({{rows.top, top}, column});
    if (rows.end > end)
        m_open.push_back({{end, rows.end}, column});
}

QVector<QRect> RectangleSweep::takeRectangles()
{
    closeAll();
    QVector<QRect> rectangles;
    rectangles.swap(m_rectangles);
    return rectangles;
}

void RectangleSweep::close(const Rows &rows, int left)
{
    m_rectangles.append(QRect(left, rows.top, m_column + 1 - left, rows.count()));
}

void RectangleSweep::closeAll()
{
    for (const Piece &piece : m_open)
        close(piece.rows, piece.left);
    m_open.clear();
}

void RectangleSweep::closeAbove(int row)
{
    while (!m_open.empty() && m_open.front().rows.top < row) {
        Piece &piece = m_open.front();
        if (piece.rows.end > row) {
            close({piece.rows.top, row}, piece.left);
            piece.rows.top = row;
            return;
        }
        close(piece.rows, piece.left);
        m_open.pop_front();
    }
}

void RectangleSweep::closeBelow(int row)
{
    while (!m_open.empty() && m_open.back().rows.end > row) {
        Piece &piece = m_open.back();
        if (piece.rows.top < row) {
            close({row, piece.rows.end}, piece.left);
            piece.rows.end = row;
            return;
        }
        close(piece.rows, piece.left);
        m_open.pop_back();
    }
}

} // namespace graph
