#pragma once

#include "common/Export.h"

#include <QVector>

namespace graph {

// Straight loops over traces, which the compiler turns into instructions for several samples at a time. NaN
// is a value that is missing.

// What is held becomes the greater, or the lesser, of both; of a pair with one missing value, the other one.
GRAPH_CHARTS_EXPORT void holdGreatest(double *held, const double *values, int count);
GRAPH_CHARTS_EXPORT void holdLeast(double *held, const double *values, int count);

GRAPH_CHARTS_EXPORT void subtract(double *result, const double *values, const double *reference, int count);

// Whether all are finite.
GRAPH_CHARTS_EXPORT bool areFinite(const double *values, int count);

// Each value becomes the mean of those at most `reach` places away, as far as there are any; values that are
// not finite are passed over, and where there are no others the result is NaN. Takes the same time for each
// reach, and no sum lasts longer than the values in it: a large value leaves no rounding error behind it.
GRAPH_CHARTS_EXPORT void smooth(double *result, const double *values, int count, int reach);

} // namespace graph
