#pragma once

#include "common/Scale.h"

#include <limits>

namespace graph {

// The farthest ends of a range: beyond, the distance between two of them would be no number.
constexpr double farthestEnd = 7e307;

// What data there is to be shown, in units of the axis.
struct ShownExtent
{
    double lowest = 0.0;
    double highest = 0.0;
    // The smallest value above 0, which a logarithmic axis begins with; 0 where there is none.
    double leastPositive = 0.0;
    // What bars and areas begin at, where they do: as an end it has no room beyond it, so that they rest on the edge.
    double baseline = std::numeric_limits<double>::quiet_NaN();
};

struct AutoRangeRequest
{
    ScaleKind scale = ScaleKind::Linear;
    // Whether ends only move outwards.
    bool onlyGrows = false;
    // Whether some room and round ends are added; else the ends are those of the data.
    bool hasHeadRoom = true;
    // As a share of the range: what is drawn around a sample, which is to be seen whole.
    double reach = 0.0;
    // Null for data that are the first, where the present range tells nothing.
    const ScaleEnds *present = nullptr;
    ShownExtent data;
};

// The range, rising, in which an axis shows the data. While they live it stays: an end moves outwards when data cross
// it, and inwards when a good part of the range has become free there. Data that are not finite leave it as it is.
ScaleEnds autoRange(const AutoRangeRequest &request);

} // namespace graph
