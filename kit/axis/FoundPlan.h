#pragma once

#include "kit/axis/AxisNumbering.h"
#include "kit/axis/TextWidths.h"

#include <mutex>
#include <optional>

namespace graph {

// The plan that was asked for last: what readings ask for is what is painted next, perhaps in another thread.
class FoundPlan
{
public:
    TickPlan of(const AxisNumbering &numbering, double lowest, double highest, double length);

private:
    struct Key
    {
        double lowest;
        double highest;
        double length;
        AxisNumbering numbering;

        bool operator==(const Key &other) const;
    };

    std::mutex m_mutex;
    TextWidths m_widths;
    TickPlan m_plan;
    std::optional<Key> m_key;
};

} // namespace graph
