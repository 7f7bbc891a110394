#pragma once

#include "common/Export.h"

#include <QVector>

namespace graph {

// The mean of the newest traces of the same length, at each of its places. Values that are not finite are
// passed over.
class GRAPH_CHARTS_EXPORT TraceAverage
{
public:
    // What the mean is taken of: the values, or the powers of levels in dB.
    enum Of { Values, Powers };

    // depth: how many traces; 1 at least.
    void reset(int depth, Of of = Values);

    // All the newest traces count alike, which takes the memory of all of them.
    void addLinear(const double *values, double *mean, int count);
    // A trace counts 1 / depth, and less the older it is; of the first traces all count alike.
    void addExponential(const double *values, double *mean, int count);

private:
    const double *averaged(double *buffer, const double *values, int count) const;
    void replaceFormer(const double *values, int first, int count);
    void addFinite(const double *values, int first, int count);
    void replaceFinite(const double *values, const double *former, int first, int count);
    void replaceAny(const double *values, const double *former, int first, int count);
    void countFinite(int end, int count);
    void sumAgain(int first, int end);
    void divide(double *mean, int first, int count) const;

    int m_depth = 1;
    Of m_of = Values;
    int m_taken = 0; // traces, not more than the depth
    int m_next = 0;
    QVector<QVector<double>> m_traces;
    QVector<double> m_sums;    // or means, of powers that fade
    QVector<double> m_numbers; // of finite values at each place, once there were others
};

} // namespace graph
