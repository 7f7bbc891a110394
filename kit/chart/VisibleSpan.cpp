#include "kit/chart/VisibleSpan.h"

#include "axis/ValueAxis.h"

namespace graph {

Span visibleSpan(const ValueAxis *axis)
{
    return Span{axis->minVisible(), axis->maxVisible()}.ordered();
}

Span partOf(const ValueAxis *axis, const std::optional<Span> &span)
{
    constexpr Span all{0.0, 1.0};
    const Scale scale = axis->axisRange().fullScale();
    Span part = span ? Span{scale.fraction(span->from), scale.fraction(span->to)}.ordered() : all;
    // What has no place on a logarithmic axis.
    if (std::isinf(part.from))
        part.from = all.from;
    if (std::isinf(part.to))
        part.to = all.to;
    return part.isEmpty() ? all : part;
}

// A flickable that is touched moves its content to a whole pixel: as long as the length is the same that is no change.
std::optional<Span> spanShown(const ValueAxis *axis, double part, const std::optional<Span> &before,
                              double pixels)
{
    constexpr double nearlyAll = 1.0 - 1e-9;
    constexpr double noMove = 0.75; // of a pixel
    const Span now = visibleSpan(axis);
    const double resized = before ? std::abs(now.length() - before->length()) : 0.0;
    if (before && resized <= 1e-9 * now.length() &&
        std::abs(now.from - before->from) <= noMove * now.length() / std::max(1.0, pixels))
        return before;
    return part < nearlyAll ? std::make_optional(now) : std::nullopt;
}

} // namespace graph
