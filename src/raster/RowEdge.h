#pragma once

#include <QPointF>

namespace graph {

// A point on the raster engine's grid of 1/64 pixel.
struct GridPoint
{
    static constexpr int bits = 6;

    GridPoint() = default;
    explicit GridPoint(const QPointF &point)
        : x(qRound(point.x() * (1 << bits)))
        , y(qRound(point.y() * (1 << bits)))
    {
    }

    int x;
    int y;
};

// An edge of an outline as the raster engine follows it from row to row, which decides the pixels along it: in steps of
// 1/65536 pixel, and pixels are taken at their centres.
struct RowEdge
{
    static constexpr int bits = 16;

    int row;
    int end;         // the row after the last
    qint64 position; // in the first row
    qint64 step;     // to the next
    int winding;     // -1 where it leads up

    bool isEmpty() const { return row >= end; }
    // Of the first pixel to the right of it.
    int column() const { return int(position >> bits); }
};

// As much of it as lies in the rows top to bottom.
RowEdge rowEdge(GridPoint from, GridPoint to, int top, int bottom);

} // namespace graph
