#include "painters/Integral.h"

#include <limits>

namespace graph {

double integral(const Curve &curve, double begin, double end, double baseLevel)
{
    if (begin > end)
        return -integral(curve, end, begin, baseLevel);
    double sum = 0.0;
    visitLines(curve, begin, end, [&](const QPointF &from, const QPointF &to) {
        sum += (to.x() - from.x()) * (0.5 * (from.y() + to.y()) - baseLevel);
    });
    return sum;
}

double logarithmicIntegral(const Curve &curve, double begin, double end)
{
    if (begin > end)
        return logarithmicIntegral(curve, end, begin);
    const auto power = [](double decibels) { return std::exp(decibels * (M_LN10 / 10.0)); };
    double sum = 0.0;
    // Mostly the end of the line before: each power is computed once.
    double knownY = 0.0;
    double knownPower = 1.0;
    visitLines(curve, begin, end, [&](const QPointF &from, const QPointF &to) {
        const double fromPower = from.y() == knownY ? knownPower : power(from.y());
        knownY = to.y();
        knownPower = power(knownY);
        sum += (to.x() - from.x()) * 0.5 * (fromPower + knownPower);
    });
    return sum > 0.0 ? 10.0 * std::log10(sum) : 0.0;
}

double interpolatedY(const Curve &curve, double x)
{
    double y = std::numeric_limits<double>::quiet_NaN();
    visitLines(curve, x, x, [&](const QPointF &from, const QPointF &) { y = from.y(); });
    return y;
}

} // namespace graph
