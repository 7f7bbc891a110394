#pragma once

#include <QRect>
#include <QVector>

#include <vector>

namespace graph {

// The pixel rows top..end-1.
struct Rows
{
    int top = 0;
    int end = 0;

    bool isEmpty() const { return end <= top; }
    int count() const { return end - top; }
    bool touches(const Rows &other) const { return top <= other.end && other.top <= end; }
    void unite(const Rows &other)
    {
        top = qMin(top, other.top);
        end = qMax(end, other.end);
    }
};

// Covers vertical runs of pixels with rectangles, each as wide as the runs allow: an engine that fills row by
// row pays for each row of each rectangle. The rectangles are disjoint if the runs are.
class RectangleSweep
{
public:
    // Runs of neighbouring columns, one after the other, are covered together where they share rows; of
    // several runs in a column only the first.
    void add(int column, const Rows &rows);
    // What covers all runs so far, which are forgotten.
    QVector<QRect> takeRectangles();

private:
    struct Piece
    {
        Rows rows;
        int left = 0;
    };

    void close(const Rows &rows, int left);
    void closeAll();
    void closeAbove(int row);
    void closeBelow(int row);
    void begin(const Piece &piece);
    void grow();

    // The pieces first..end-1 from top to bottom, without gaps: the run in the last column. They come and go at both
    // ends, so there is room before and behind them.
    std::vector<Piece> m_open = std::vector<Piece>(32);
    std::size_t m_first = 0;
    std::size_t m_end = 0;
    int m_column = 0;
    QVector<QRect> m_rectangles;
};

} // namespace graph
