#pragma once

#include <QtGlobal>

// What libtoskornui shows to the programs that link it.
#ifdef toskornui_EXPORTS
#define GRAPH_UI_EXPORT Q_DECL_EXPORT
#else
#define GRAPH_UI_EXPORT Q_DECL_IMPORT
#endif
