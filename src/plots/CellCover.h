#pragma once

#include <algorithm>
#include <vector>

namespace graph {

// Columns, or rows, first..end-1 of a grid of cells; none when they are equal.
struct CellRange
{
    int first = 0;
    int end = 0;

    int count() const { return end - first; }
    bool operator==(const CellRange &other) const { return first == other.first && end == other.end; }
    void include(const CellRange &other)
    {
        if (other.count() == 0)
            return;
        first = count() == 0 ? other.first : std::min(first, other.first);
        end = std::max(end, other.end);
    }
};

// For each of `pixels` pixels the cells that cover it. Cell i reaches from edges[i] to edges[i + 1], in item
// coordinates, and takes the pixels trunc(low)..trunc(high)-1, at least one; cells that lie before 0 or after
// `last` as a whole are left out. The cells of one pixel are neighbours as long as the edges rise or fall
// throughout.
std::vector<CellRange> coveringCells(const std::vector<double> &edges, int pixels, double last);

// out[i] = the larger of a[i] and b[i].
void largerOf(const unsigned char *a, const unsigned char *b, unsigned char *out, int count);

} // namespace graph
