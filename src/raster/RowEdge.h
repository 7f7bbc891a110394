#pragma once

#include <QPointF>

#include <algorithm>
#include <cstring>
#include <limits>
#include <utility>

namespace graph {

// A point on the raster engine's grid of 1/64 pixel.
struct GridPoint
{
    static constexpr int bits = 6;

    GridPoint() = default;
    // Both coordinates at once, as qRound() rounds what is not negative: written one after the other they could not be
    // copied as one before both writes are through, which is soon after.
    explicit GridPoint(const QPointF &point)
    {
        using Point = double __attribute__((vector_size(2 * sizeof(double))));
        using Rounded = int __attribute__((vector_size(2 * sizeof(int))));
        const Point fine = Point{point.x(), point.y()} * double(1 << bits);
        if (fine[0] >= 0.0 && fine[1] >= 0.0) {
            const Rounded rounded = __builtin_convertvector(fine + 0.5, Rounded);
            std::memcpy(this, &rounded, sizeof rounded);
        } else {
            x = qRound(fine[0]);
            y = qRound(fine[1]);
        }
    }

    // The first row of pixels whose centres are not above it, and the first column where they are not to its left.
    int row() const { return (y + (1 << (bits - 1))) >> bits; }
    int column() const { return (x + (1 << (bits - 1))) >> bits; }

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
    int columnAt(int other) const { return int((position + (other - row) * step) >> bits); }
};

// As much of it as lies in the rows top to bottom.
inline RowEdge rowEdge(GridPoint from, GridPoint to, int top, int bottom)
{
    RowEdge edge;
    edge.winding = 1;
    if (from.y > to.y) {
        std::swap(from, to);
        edge.winding = -1;
    }
    edge.row = std::max(top, from.row());
    edge.end = std::min(bottom + 1, to.row());
    if (edge.isEmpty())
        return edge;

    constexpr int finer = RowEdge::bits - GridPoint::bits;
    constexpr qint64 one = 1 << RowEdge::bits;
    constexpr qint64 centre = one / 2;
    constexpr qint64 longestStep = std::numeric_limits<int>::max();
    const qint64 across = (qint64(to.x) - from.x) * one;
    edge.step = qBound(-longestStep, across / (to.y - from.y), longestStep);
    const qint64 down = edge.row * one + centre - from.y * qint64(1 << finer);
    edge.position = from.x * qint64(1 << finer) + centre + ((edge.step * down) >> RowEdge::bits);
    return edge;
}

} // namespace graph
