#pragma once

#include "data/SampleSpan.h"

namespace graph {

// Samples per pixel column above which a trace is reduced to one stroke a column; a hair above 1, so that
// data with exactly one sample a column is still drawn sample by sample.
constexpr double densestDirectPaint = 1.001;

// Samples per pixel column of an item of that width in pixels; NaN for a lone sample.
inline double sampleDensity(const SampleSpan &samples, double width, double visibleRangeX)
{
    return (samples.size() - 1) /
           ((width - 1.0) * ((samples.last().x() - samples.first().x()) / visibleRangeX));
}

} // namespace graph
