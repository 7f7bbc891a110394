#include "axis/TickSearch.h"

#include "common/SafeInteger.h"

#include <algorithm>
#include <cmath>

namespace graph {

namespace {

// The spacing that would give exactly count ticks; 0 when there is none.
double exactInterval(double range, int count)
{
    const double interval = count == 0 ? 0.0 : std::abs(range / count);
    return std::isfinite(interval) ? interval : 0.0;
}

} // namespace

double decimalInterval(double range, int count, const QList<qreal> &mantissas)
{
    const double exact = exactInterval(range, count);
    if (exact == 0.0 || mantissas.isEmpty())
        return 0.0;
    const double magnitude = std::pow(10.0, std::floor(std::log10(exact)));
    const double wanted = exact / magnitude;
    const auto fits = [wanted](double mantissa) { return mantissa >= wanted; };
    const auto found = std::find_if(mantissas.cbegin(), mantissas.cend(), fits);
    return magnitude * (found == mantissas.cend() ? mantissas.last() : *found);
}

double binaryInterval(double range, int count)
{
    const double exact = exactInterval(range, count);
    if (exact == 0.0)
        return 0.0;
    const double power = std::scalbn(1.0, std::ilogb(exact));
    return std::round(range / power) > count + 1.0 ? 2.0 * power : power;
}

QList<qreal> spacedTicks(double lowest, double highest, double interval)
{
    QList<qreal> ticks;
    if (!std::isfinite(lowest) || !std::isfinite(highest) || !std::isfinite(interval))
        return ticks;
    // Adding 0 turns the negative zero of a start just below 0 into 0.
    double tick = (std::ceil(lowest / interval) + 0.0) * interval;
    while (tick <= highest && ticks.size() < tickLimit) {
        ticks.append(tick);
        const double next = tick + interval;
        if (next == tick)
            break;
        tick = next;
    }
    return ticks;
}

QList<qreal> ticksWithin(const QList<qreal> &positions, double lowest, double highest)
{
    QList<qreal> ticks;
    std::copy_if(positions.cbegin(), positions.cend(), std::back_inserter(ticks),
                 [=](double position) { return lowest <= position && position <= highest; });
    return ticks;
}

int tickCount(double length, double labelSize, double ratio)
{
    const double count = length / labelSize * ratio;
    if (!std::isfinite(count))
        return 0;
    return count > 0.0 && count < 1.0 ? 1 : truncated(count, 0, tickLimit);
}

} // namespace graph
