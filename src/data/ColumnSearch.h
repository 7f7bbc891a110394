#pragma once

#include "common/PixelMapping.h"
#include "data/LeadingCount.h"
#include "data/SampleSpan.h"

namespace graph {

// The first index from `from` on whose sample lies right of `column`, of samples of ascending x, or descending
// where x falls from left to right. Columns never fall along them, so this can search, outwards from `guess` samples after `from`; it asks for exactly
// the column that is drawn, however it is rounded.
inline int columnEnd(const SampleSpan &samples, const PixelMapping &mapping, int from, int column, int guess)
{
    return from + mapping.searchUpToColumn(column, [&](const auto &isUpToColumn) {
        return leadingCount(samples.size() - from, guess,
                            [&](int i) { return isUpToColumn(samples.x(from + i)); });
    });
}

} // namespace graph
