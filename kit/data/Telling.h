#pragma once

#include "common/Export.h"

#include <QString>

#include <limits>

class QObject;

namespace graph {

// Says something of an object of a document in the log, category graph.kit, with the object's type and id, its
// file and line, and a full stop; those who listen to the engine's warnings hear the sentence, too. Gives what
// the log says. On the application's thread.
GRAPH_CHARTS_EXPORT QString tell(const QObject *about, const QString &sentence);

// The same, but only the first time that the matter of that name comes up with the object.
GRAPH_CHARTS_EXPORT void tellOnce(const QObject *about, const char *matter, const QString &sentence);

// Whether it has been told.
bool wasTold(const QObject *about, const char *matter);

// Of a value that a property does not take as it is, once. The greatest one may be infinite.
GRAPH_CHARTS_EXPORT void tellOfBound(const QObject *owner, const char *property, double written, double taken,
                                     double least, double most);

// The value, or else the nearest one that the property takes, of which it tells.
template <typename Value>
Value bounded(const QObject *owner, const char *property, Value written, Value least,
              Value most = std::numeric_limits<Value>::max())
{
    if (written >= least && written <= most)
        return written;
    const Value taken = written > most ? most : least;
    const bool isOpen = most == std::numeric_limits<Value>::max();
    tellOfBound(owner, property, double(written), double(taken), double(least),
                isOpen ? std::numeric_limits<double>::infinity() : double(most));
    return taken;
}

} // namespace graph
