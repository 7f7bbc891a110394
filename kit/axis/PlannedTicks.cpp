#include "kit/axis/PlannedTicks.h"

#include <QFontMetrics>

#include <algorithm>

namespace graph {

bool PlannedTicks::update(const AxisNumbering &numbering, double lowest, double highest, double length,
                          FoundPlan *found)
{
    const PlanKey key{lowest, highest, length, numbering};
    if (m_key && *m_key == key && !numbering.formatter)
        return false;
    m_key = key;
    TickPlan wanted = found->of(numbering, lowest, highest, length);
    if (wanted == m_plan)
        return false;
    m_plan = std::move(wanted);
    if (numbering.isAlongText)
        return true;
    const QFontMetrics metrics(numbering.font);
    for (const QString &text : qAsConst(m_plan.texts))
        m_widestText = std::max(m_widestText, metrics.horizontalAdvance(text));
    return true;
}

} // namespace graph
