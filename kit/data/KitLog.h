#pragma once

#include "common/Export.h"

#include <QLoggingCategory>

namespace graph {

// What the kit has to say about a document: "graph.kit".
GRAPH_CHARTS_EXPORT const QLoggingCategory &kitLog();

} // namespace graph
