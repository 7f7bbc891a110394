#pragma once

#include "common/PixelMapping.h"
#include "plots/HeatmapFile.h"

namespace graph {

// Pixels line by line from the top, without padding.
struct PixelBuffer
{
    unsigned int *pixels;
    int width;
    int height;
};

// Writes the cells of a heat map into all of a buffer, x in MHz and y in levels; topLevel is the
// centre of row 0. A cell takes the pixels trunc(low)..trunc(high)-1, at least one; where several share a
// pixel the largest code wins. Pixels without a cell are 0. Throws std::out_of_range for a visible code that
// has no colour.
void rasterizeHeatmap(const Heatmap &heatmap, double topLevel, const PixelMapping &mapping,
                      const std::vector<unsigned int> &colors, const PixelBuffer &buffer);

} // namespace graph
