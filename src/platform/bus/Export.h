#pragma once

#include <QtGlobal>

// What libtoskorn shows to the programs that link it.
#ifdef toskorn_EXPORTS
#define GRAPH_BUS_EXPORT Q_DECL_EXPORT
#else
#define GRAPH_BUS_EXPORT Q_DECL_IMPORT
#endif
