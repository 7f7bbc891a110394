#pragma once

#include "common/Export.h"

#include <QVector>

namespace graph {

// The mean of the newest traces of the same length, at each of its places. Values that are not finite are
// passed over.
class GRAPH_CHARTS_EXPORT TraceAverage
{
public:
    // depth: how many traces; 1 at least.
    void reset(int depth);

    // All the newest traces count alike, which takes the memory of all of them.
    void addLinear(const double *values, double *mean, int count);
    // A trace counts 1 / depth, and less the older it is; of the first traces all count alike.
    void addExponential(const double *values, double *mean, int count);

private:
    void replaceFinite(const double *values, const double *former, int count);
    void replaceAny(const double *values, const double *former, int count);
    void sumAgain(int first, int end);

    int m_depth = 1;
    int m_taken = 0; // traces, not more than the depth
    int m_next = 0;
    QVector<QVector<double>> m_traces;
    QVector<double> m_sums;
    QVector<double> m_numbers; // of finite values at each place, once there were others
};

} // namespace graph
