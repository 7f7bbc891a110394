#pragma once

#include "common/Export.h"

#include <QString>

class QObject;

namespace graph {

// Says something of an object of a document in the log, category graph.kit, with the object's type and id, its
// file and line, and a full stop; those who listen to the engine's warnings hear the sentence, too. Gives what
// the log says. On the application's thread.
GRAPH_CHARTS_EXPORT QString tell(const QObject *about, const QString &sentence);

} // namespace graph
