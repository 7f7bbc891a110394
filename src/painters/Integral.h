#pragma once

#include "data/SampleSpan.h"

#include <QPointF>

#include <algorithm>
#include <cmath>

namespace graph {

// A curve of straight lines: between neighbouring samples, or, for segments, between the two samples of each
// pair only. Lines that touch a sample with an infinite or NaN coordinate are gaps in the curve.
struct Curve
{
    SampleSpan samples;
    bool isSegments = false;
};

// Area between the curve and the base level from begin to end by the trapezoid rule, in x units times y units,
// positive above it; y at the limits is interpolated. Nothing outside the samples and in gaps;
// begin > end gives the negative area, NaN in a limit or no common stretch 0.
double integral(const Curve &curve, double begin, double end, double baseLevel);

// Total of a curve in decibels: 10 log10 of the integral of 10^(y/10), with y at the limits interpolated. The
// limits may be swapped; NaN in a limit or no common stretch gives 0.
double logarithmicIntegral(const Curve &curve, double begin, double end);

// The curve's y at x, the mean of neighbours weighted by distance; NaN outside the samples and in gaps.
double interpolatedY(const Curve &curve, double x);

// Puts the end points of a line in order from left to right and cuts it at the limits. False where nothing is left of it,
// or where it has no place.
inline bool cutLine(QPointF &from, QPointF &to, double begin, double end)
{
    const auto isFinite = [](const QPointF &p) { return std::isfinite(p.x()) && std::isfinite(p.y()); };
    if (to.x() < from.x())
        std::swap(from, to);
    if (!isFinite(from) || !isFinite(to) || !(to.x() >= begin && from.x() <= end))
        return false;
    const QPointF start = from;
    const auto pointAt = [&start, &to](double x) {
        return QPointF(x, start.y() + (to.y() - start.y()) * ((x - start.x()) / (to.x() - start.x())));
    };
    if (from.x() < begin)
        from = pointAt(begin);
    if (to.x() > end)
        to = pointAt(end);
    return true;
}

// Calls visit(from, to) with the end points of each line of the curve between begin and end, from left to
// right for a curve that is not one of segments. Lines that cross a limit are cut there. Nothing unless begin
// <= end.
template <typename Visitor> void visitLines(const Curve &curve, double begin, double end, Visitor visit)
{
    const SampleSpan &samples = curve.samples;
    if (!(begin <= end))
        return;
    int first = 0;
    int last = samples.size() - 1;
    if (!curve.isSegments) {
        first = std::max(0, samples.countBelow(begin) - 1);
        last = std::min(last, samples.countUpTo(end, first));
    }
    for (int i = first; i < last; i += curve.isSegments ? 2 : 1) {
        QPointF from = samples.at(i);
        QPointF to = samples.at(i + 1);
        if (cutLine(from, to, begin, end))
            visit(from, to);
    }
}

} // namespace graph
