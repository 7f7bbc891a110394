#include "common/ObjectCounter.h"

namespace graph {

ObjectCounter::ObjectCounter(const char *prefix)
    : m_prefix(prefix)
{
}

QString ObjectCounter::nextName()
{
    return QLatin1String(m_prefix) + QString::number(m_count++);
}

} // namespace graph
