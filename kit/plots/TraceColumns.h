#pragma once

#include "common/Export.h"
#include "common/PixelMapping.h"
#include "data/SampleSpan.h"

#include <vector>

namespace graph {

// What the samples of one pixel column come to, in item coordinates that are not rounded. Sparse samples have
// a column each.
struct TraceColumn
{
    int column;   // of the item, or beside it for the neighbours of what is visible
    int samples;  // how many it has, gaps included
    double x;     // of a lone sample, else that of the column
    double first; // y of the first and of the last sample; NaN where there is a gap
    double last;
    double top; // the extremes of y: top <= bottom, or NaN both where there are only gaps
    double bottom;

    bool isGap() const { return !(top <= bottom); }
};

// The columns with samples, from left to right. Samples without a place, such as NaN, are gaps.
// samples: from left to right.
GRAPH_CHARTS_EXPORT std::vector<TraceColumn> traceColumns(const SampleSpan &samples,
                                                          const PixelMapping &mapping);

// Whether the line goes on from one column to the next.
inline bool areJoined(const TraceColumn &left, const TraceColumn &right)
{
    return left.last == left.last && right.first == right.first;
}

} // namespace graph
