#pragma once

#include "common/Export.h"
#include "kit/data/SampleSums.h"

#include <QPointer>

#include <vector>

namespace graph {

// The smallest y and x above 0 of data, for logarithmic axes; infinity where there is none. Of data that scroll only
// the new samples are read.
class GRAPH_CHARTS_EXPORT LeastPositive
{
public:
    // Of the samples between two x.
    double y(const PlotData *data, double xMin, double xMax);
    static double x(const PlotData *data);

private:
    struct Known
    {
        QPointer<const PlotData> data;
        SampleSums sums;
    };
    std::vector<Known> m_known;
};

} // namespace graph
