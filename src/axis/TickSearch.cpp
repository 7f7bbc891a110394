#include "axis/TickSearch.h"

#include "common/SafeInteger.h"

#include <algorithm>
#include <cmath>

namespace graph {

namespace {

constexpr int mostTicks = 10000;

// The part of the range between two ticks; 0 when there can be none.
double share(double range, int count)
{
    const double result = std::abs(range / count);
    return count > 0 && std::isfinite(result) ? result : 0.0;
}

} // namespace

double decimalInterval(double range, int count, const QList<qreal> &mantissas)
{
    const double x = share(range, count);
    if (x == 0.0 || mantissas.isEmpty())
        return 0.0;
    const double magnitude = std::pow(10.0, truncatedIndex(std::floor(std::log10(x))));
    const double norm = x / magnitude;
    const auto fits = std::find_if(mantissas.begin(), mantissas.end(), [norm](double m) { return m >= norm; });
    return magnitude * (fits != mantissas.end() ? *fits : mantissas.last());
}

double binaryInterval(double range, int count)
{
    const double x = share(range, count);
    if (x == 0.0)
        return 0.0;
    const double power = std::scalbn(1.0, std::ilogb(x));
    return std::round(range / power) > count + 1.0 ? 2.0 * power : power;
}

QList<qreal> tickValues(double lowest, double highest, double interval)
{
    QList<qreal> ticks;
    if (!std::isfinite(lowest) || !std::isfinite(highest) || !std::isfinite(interval) || !(interval > 0.0))
        return ticks;
    for (double tick = std::ceil(lowest / interval) * interval; tick <= highest; tick += interval) {
        if (ticks.size() == mostTicks || tick + interval == tick)
            break;
        ticks.append(tick);
    }
    return ticks;
}

QList<qreal> ticksBetween(const QList<qreal> &positions, double lowest, double highest)
{
    QList<qreal> ticks;
    std::copy_if(positions.begin(), positions.end(), std::back_inserter(ticks),
                 [=](double tick) { return lowest <= tick && tick <= highest; });
    return ticks;
}

int tickCount(double length, double labelSize, double ratio)
{
    const double count = length / labelSize * ratio;
    if (!std::isfinite(count))
        return 0;
    return count > 0.0 && count < 1.0 ? 1 : truncated(count, 0, mostTicks);
}

} // namespace graph
