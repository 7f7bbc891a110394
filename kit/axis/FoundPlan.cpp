#include "kit/axis/FoundPlan.h"

namespace graph {

bool PlanKey::operator==(const PlanKey &other) const
{
    return lowest == other.lowest && highest == other.highest && length == other.length &&
           numbering == other.numbering;
}

TickPlan FoundPlan::of(const AxisNumbering &numbering, double lowest, double highest, double length)
{
    if (numbering.formatter)
        return numbering.plan(lowest, highest, length);
    const PlanKey key{lowest, highest, length, numbering};
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (!(m_key == key)) {
        m_plan = numbering.plan(lowest, highest, length, &m_widths);
        m_key = key;
    }
    return m_plan;
}

} // namespace graph
