#pragma once

#include "common/Export.h"

#include <QList>

class AbstractPlot;

namespace graph {

// Tells each trace of bars that has only one where the nearest bars of the others on its axis are.
GRAPH_CHARTS_EXPORT void shareBarRoom(const QList<AbstractPlot *> &plots);

} // namespace graph
