#include "kit/plots/ScaleTicks.h"

#include <algorithm>
#include <cmath>

namespace graph {

namespace {

// The least of 1, 2, 5, 10, 20 ... times a power of ten that is not below.
double roundStepFrom(double step)
{
    const double power = std::pow(10.0, std::floor(std::log10(step)));
    for (const double factor : {1.0, 2.0, 5.0}) {
        if (factor * power >= step)
            return factor * power;
    }
    return 10.0 * power;
}

} // namespace

QString ScaleTicks::labelOf(double value) const
{
    // No "-0.0".
    const QString text = QString::number(value, isPlain ? 'f' : 'g', digits);
    return text.startsWith(QLatin1Char('-')) && text.toDouble() == 0.0 ? text.mid(1) : text;
}

ScaleTicks scaleTicks(double from, double to, int most)
{
    ScaleTicks ticks;
    const double low = std::min(from, to);
    const double high = std::max(from, to);
    const double span = high - low;
    if (!(span > 0.0) || !std::isfinite(span) || most < 1)
        return ticks;
    double step = roundStepFrom(span / most);
    if (std::floor(high / step) - std::ceil(low / step) + 1.0 > most)
        step = roundStepFrom(1.5 * step);
    // Neighbours have to be numbers of their own.
    if (!std::isnormal(step) ||
        std::max(std::abs(low), std::abs(high)) + step / 2.0 == std::max(std::abs(low), std::abs(high)))
        return ticks;
    const int decimals = std::max(0, int(-std::floor(std::log10(step) + 1e-9)));
    const double greatest = std::max(std::abs(low), std::abs(high));
    ticks.isPlain = greatest < 1e6 && decimals <= 4;
    ticks.digits =
        ticks.isPlain
            ? decimals
            : std::max(1, int(std::floor(std::log10(greatest)) - std::floor(std::log10(step) + 1e-9)) + 1);
    const double first = std::ceil(low / step);
    for (int i = 0; i < most && (first + i) * step <= high; ++i) {
        const double value = (first + i) * step + 0.0; // no negative zero
        ticks.values.append(value);
        ticks.labels.append(ticks.labelOf(value));
    }
    return ticks;
}

} // namespace graph
