#include "kit/data/KitLog.h"

namespace graph {

const QLoggingCategory &kitLog()
{
    static const QLoggingCategory category("graph.kit");
    return category;
}

} // namespace graph
