#pragma once

#include <QtGlobal>

// What libgraph_charts shows to the programs that link it. All else is hidden, except where tests and benchmarks are
// built, which look inside.
#ifdef graph_charts_EXPORTS
#define GRAPH_CHARTS_EXPORT Q_DECL_EXPORT
#else
#define GRAPH_CHARTS_EXPORT Q_DECL_IMPORT
#endif
