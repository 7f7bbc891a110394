#pragma once

#include "kit/axis/FoundPlan.h"

#include <optional>

namespace graph {

// The ticks and texts that an axis shows: planned again, which is not cheap, only where something has changed that they
// depend on.
class PlannedTicks
{
public:
    const TickPlan &plan() const { return m_plan; }
    // The widest text since forget() of an axis whose texts are above each other, in pixels; else 0.
    int widestText() const { return m_widestText; }

    // False when they stay the same.
    bool update(const AxisNumbering &numbering, double lowest, double highest, double length,
                FoundPlan *found);
    void forget() { *this = {}; }

private:
    TickPlan m_plan;
    std::optional<PlanKey> m_key;
    int m_widestText = 0;
};

} // namespace graph
