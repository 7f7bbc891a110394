#pragma once

#include "kit/axis/AxisNumbering.h"
#include "kit/axis/TextWidths.h"

#include <mutex>
#include <optional>

namespace graph {

// What a plan depends on, where there is no formatter: that may answer differently at any time.
struct PlanKey
{
    double lowest;
    double highest;
    double length;
    AxisNumbering numbering;

    bool operator==(const PlanKey &other) const;
};

// The plan that was asked for last: what readings ask for is what is painted next, perhaps in another thread.
class FoundPlan
{
public:
    TickPlan of(const AxisNumbering &numbering, double lowest, double highest, double length);

private:
    std::mutex m_mutex;
    TextWidths m_widths;
    TickPlan m_plan;
    std::optional<PlanKey> m_key;
};

} // namespace graph
