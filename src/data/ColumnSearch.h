#pragma once

#include "common/PixelMapping.h"
#include "data/LeadingCount.h"
#include "data/SampleSpan.h"

namespace graph {

// The first index from `from` on whose sample lies right of `column`, of samples of ascending x. Columns
// never fall along them, so this can search, outwards from `guess` samples after `from`; it asks for exactly
// the column that is drawn, however it is rounded.
inline int columnEnd(const SampleSpan &samples, const PixelMapping &mapping, int from, int column, int guess)
{
    const auto isUpToColumn = mapping.upToColumn(column);
    return from + leadingCount(samples.size() - from, guess,
                               [&](int i) { return isUpToColumn(samples.x(from + i)); });
}

} // namespace graph
