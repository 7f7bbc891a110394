#pragma once

#include "common/PixelMapping.h"
#include "data/SampleSpan.h"

namespace graph {

// Samples per pixel column above which a trace is reduced to one stroke a column; a hair above 1, so that
// data with exactly one sample a column is still drawn sample by sample.
constexpr double densestDirectPaint = 1.001;

// Samples per pixel column of the stretch that they cover; NaN for a lone sample. On a logarithmic axis it is
// the mean of a density that changes along the stretch.
inline double sampleDensity(const SampleSpan &samples, const PixelMapping &mapping, double visibleRangeX)
{
    const double first = samples.first().x();
    const double last = samples.last().x();
    const double columns = mapping.isLinearX() ? (mapping.width() - 1.0) * ((last - first) / visibleRangeX)
                                               : mapping.x(last) - mapping.x(first);
    return (samples.size() - 1) / columns;
}

} // namespace graph
