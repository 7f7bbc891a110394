#include "raster/RowEdge.h"

#include <algorithm>
#include <limits>

namespace graph {

RowEdge rowEdge(GridPoint from, GridPoint to, int top, int bottom)
{
    RowEdge edge;
    edge.winding = 1;
    if (from.y > to.y) {
        std::swap(from, to);
        edge.winding = -1;
    }
    constexpr int half = 1 << (GridPoint::bits - 1);
    edge.row = std::max(top, (from.y + half) >> GridPoint::bits);
    edge.end = std::min(bottom, (to.y - half) >> GridPoint::bits) + 1;
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
