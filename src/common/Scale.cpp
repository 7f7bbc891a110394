#include "common/Scale.h"

#include <algorithm>

namespace graph {

ScaleEnds positivePart(double begin, double end)
{
    constexpr double threeDecades = 1e-3;
    const double highest = std::max(begin, end);
    if (std::min(begin, end) > 0.0 || std::isnan(begin) || std::isnan(end))
        return {begin, end};
    const ScaleEnds rising =
        highest > 0.0 ? ScaleEnds{highest * threeDecades, highest} : ScaleEnds{1.0, 10.0};
    return begin > end ? ScaleEnds{rising.end, rising.begin} : rising;
}

Scale Scale::between(ScaleKind kind, const ScaleEnds &ends, double range, double length)
{
    if (kind == ScaleKind::Linear)
        return Scale(kind, ends, ends.begin, range, length);
    const ScaleEnds positive = positivePart(ends.begin, ends.end);
    const double begin = logarithm(positive.begin);
    return Scale(kind, positive, begin, logarithm(positive.end) - begin, length);
}

// The ends are those that were given: a chart that is not zoomed shows exactly its range.
double Scale::logarithmicValue(double fraction) const
{
    if (fraction == 0.0 || fraction == 1.0)
        return fraction == 0.0 ? m_ends.begin : m_ends.end;
    return std::exp(m_begin + m_range * fraction);
}

} // namespace graph
