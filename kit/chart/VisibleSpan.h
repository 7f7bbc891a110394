#pragma once

#include "kit/chart/Span.h"

#include <optional>

class ValueAxis;

namespace graph {

// What of an axis is visible, from < to.
Span visibleSpan(const ValueAxis *axis);

// The span as fractions of the axis' full range; all of it without a span.
Span partOf(const ValueAxis *axis, const std::optional<Span> &span);

// What a chart shows of an axis after its zoom rectangle has changed, which now shows that part of the full range on so
// many pixels; none where that is everything. before: what it showed until then.
std::optional<Span> spanShown(const ValueAxis *axis, double part, const std::optional<Span> &before,
                              double pixels);

} // namespace graph
