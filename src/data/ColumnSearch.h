#pragma once

#include "common/PixelMapping.h"
#include "data/LeadingCount.h"
#include "data/SampleSpan.h"

namespace graph {

// The first index from `from` on whose sample lies right of `column`, of samples of ascending x, or descending
// where x falls from left to right. Columns never fall along them, so this can search, outwards from `guess`
// samples after `from`; it asks for exactly the column that is drawn, however it is rounded.
inline int columnEnd(const SampleSpan &samples, const PixelMapping &mapping, int from, int column, int guess)
{
    const auto end = [&](int start, const auto &isUpToColumn) {
        return from + leadingCount(samples.size() - from, start,
                                   [&](int i) { return isUpToColumn(samples.x(from + i)); });
    };
    if (mapping.isLinearX())
        return end(guess, mapping.upToColumn(column));
    const double border = mapping.columnBorder(column);
    return end(samples.near(border, from + guess) - from, mapping.upToColumn(column, border));
}

} // namespace graph
