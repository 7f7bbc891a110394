#pragma once

#include <QString>

namespace graph {

// The name on the bus of the service "analyzer" is "org.toskorn.analyzer"; empty when a service cannot be
// called that.
QString busName(const QString &serviceName);

// The path of the one object of the service `busName`, such as "/org/toskorn/analyzer". Takes valid bus names
// only.
QString busPath(const QString &busName);

} // namespace graph
