#pragma once

#include "common/Export.h"
#include "data/SampleSpan.h"

#include <QVector>

namespace graph {

struct Peak
{
    int index; // of the sample in the middle of its top
    double value;
    double prominence; // how far it rises above the higher of the lowest points towards higher samples, or
                       // the ends
};

// The samples that are higher than both neighbours, in their order. Of equal samples beside each other the
// middle one. The first and the last sample are no peaks, nor are those beside one that is not finite, which
// bounds like an end. Takes time in proportion to the samples.
GRAPH_CHARTS_EXPORT QVector<Peak> findPeaks(const SampleSpan &samples);

// The width of a peak at half its prominence, in units of x, with its sides interpolated.
GRAPH_CHARTS_EXPORT double peakWidth(const SampleSpan &samples, const Peak &peak);

} // namespace graph
