#include "plots/CellCover.h"

#include "common/SafeInteger.h"

#include <cmath>
#include <cstring>

namespace graph {

std::vector<CellRange> coveringCells(const std::vector<double> &edges, int pixels, double last)
{
    std::vector<CellRange> ranges(pixels);
    for (int i = 0; i + 1 < int(edges.size()); ++i) {
        if (std::isunordered(edges[i], edges[i + 1]))
            continue;
        const double low = std::min(edges[i], edges[i + 1]);
        const double high = std::max(edges[i], edges[i + 1]);
        const bool isVisible = (high > 0.0 || low == 0.0) && low <= last;
        if (!isVisible)
            continue;
        const int first = pixel(low);
        const int end = std::min(std::max(pixel(high), first + 1), pixels);
        for (int p = std::max(first, 0); p < end; ++p)
            ranges[p].include({i, i + 1});
    }
    return ranges;
}

// In blocks of a fixed size, which compilers turn into single instructions.
void largerOf(const unsigned char *a, const unsigned char *b, unsigned char *out, int count)
{
    constexpr int blockSize = 16;
    int i = 0;
    for (; i + blockSize <= count; i += blockSize) {
        unsigned char x[blockSize];
        unsigned char y[blockSize];
        std::memcpy(x, a + i, blockSize);
        std::memcpy(y, b + i, blockSize);
        for (int k = 0; k < blockSize; ++k)
            x[k] = std::max(x[k], y[k]);
        std::memcpy(out + i, x, blockSize);
    }
    for (; i < count; ++i)
        out[i] = std::max(a[i], b[i]);
}

} // namespace graph
