#pragma once

#include "common/Export.h"

namespace graph {

// Levels in dB as powers, and back. Powers are within 1.1 units in the last place of the exponential of the level times
// the tenth of log 10, levels within four; there and back it is 1e-15 of a level. Processors that fuse products and sums
// round once where others do twice, so the last places depend on them.
GRAPH_CHARTS_EXPORT void powersOfLevels(double *powers, const double *levels, int count);
GRAPH_CHARTS_EXPORT void levelsOfPowers(double *levels, const double *powers, int count);

} // namespace graph
