#pragma once

#include "common/Export.h"
#include "common/Scale.h"
#include "data/SampleSpan.h"

#include <QPointF>
#include <QVector>

#include <limits>

namespace graph {

enum class LimitSide { Upper, Lower };

// How the line of a limit runs between its points: straight on an axis of that kind.
struct LimitScales
{
    ScaleKind x = ScaleKind::Linear;
    ScaleKind y = ScaleKind::Linear;
};

// What a comparison of samples with a limit gave; NaN where none of them has a limit.
struct LimitVerdict
{
    double margin = std::numeric_limits<double>::quiet_NaN(); // the least distance, negative beyond the limit
    double worstAt = std::numeric_limits<double>::quiet_NaN();

    bool isPassed() const { return margin >= 0.0; }
};

// Compares samples with the line through the limit's points, both of ascending x. Samples beside the line, or
// where one of its ends is not finite, have no limit; where it jumps both of its values count. NaN is no
// sample.
GRAPH_CHARTS_EXPORT LimitVerdict checkLimit(const QVector<QPointF> &limit, LimitSide side,
                                            const SampleSpan &samples, const LimitScales &scales = {});

} // namespace graph
