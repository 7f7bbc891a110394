#pragma once

#include <QtGlobal>

// What differs between the versions of Qt that the same sources build with, kept here where it can be.

#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
#define GRAPH_GEOMETRY_CHANGED geometryChange
#else
#define GRAPH_GEOMETRY_CHANGED geometryChanged
// Names the header of a class that is only declared where a property points to it. Qt 5 asks for none.
#define Q_MOC_INCLUDE(header)
#endif

namespace graph {

// The type in which list properties count.
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
using ListIndex = qsizetype;
#else
using ListIndex = int;
#endif

} // namespace graph
