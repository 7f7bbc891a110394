#pragma once

#include "common/Export.h"

namespace graph {

// Levels in dB as powers, and back. Within one unit in the last place for powers, and three for levels, of what
// the numbers themselves allow: 1e-15 of a level, there and back.
GRAPH_CHARTS_EXPORT void powersOfLevels(double *powers, const double *levels, int count);
GRAPH_CHARTS_EXPORT void levelsOfPowers(double *levels, const double *powers, int count);

} // namespace graph
