#pragma once

#include "raster/LinePieces.h"
#include "raster/RectangleSweep.h"

#include <QRect>
#include <QVector>

#include <limits>
#include <vector>

namespace graph {

// The pixels of convex pieces together: a run of rows in each column, or a few.
class ColumnCover
{
public:
    // Pixels outside clip, of so many rows at most, are left out.
    static constexpr int mostRows = std::numeric_limits<qint16>::max() - 1;
    explicit ColumnCover(const QRect &clip);

    // False where rounding has turned the piece inside out; the cover is of no use then.
    bool add(const LinePiece &piece);

    // Disjoint ones.
    QVector<QRect> rectangles();

private:
    // Rows, counted from the first of the clip, of several columns.
    struct Runs
    {
        std::vector<qint16> tops;
        std::vector<qint16> ends;

        explicit Runs(int columns);
        Rows at(int column) const { return {tops[column], ends[column]}; }
    };

    // Did not touch the others of their column when they came.
    struct Apart
    {
        int column;
        Rows rows;

        bool operator<(const Apart &other) const
        {
            return column != other.column ? column < other.column : rows.top < other.rows.top;
        }
    };

    int inside(int column) const { return qBound(0, column - m_clip.left(), m_clip.width()); }
    bool addRowByRow(const LinePiece &piece);
    bool follow(const GridPoint &from, const GridPoint &to);
    void begin(int first, int end, const Rows &rows);
    void unite(int first, int end);
    void uniteEach(int first, int end);

    QRect m_clip;
    Runs m_runs;
    Runs m_piece; // of the last piece, in its columns
    std::vector<Apart> m_apart;
};

} // namespace graph
