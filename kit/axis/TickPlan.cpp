#include "kit/axis/TickPlan.h"

#include "kit/axis/NumberLabels.h"
#include "kit/axis/RoundIntervals.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace graph {

namespace {

constexpr int mostTicks = 1000;
// Pixels that minor ticks keep from each other.
constexpr double minorSpacing = 5.0;

// The multiples of an interval from lowest to highest, each rounded once.
QVector<double> multiples(double lowest, double highest, double interval)
{
    QVector<double> values;
    // An end that misses a multiple by a rounding error is one.
    const double rounding = 1e-9;
    const double first = std::ceil(lowest / interval - rounding);
    const double last = std::floor(highest / interval + rounding);
    if (!(last - first < mostTicks))
        return values;
    const int count = int(last - first) + 1;
    for (int i = 0; i < count; ++i) {
        const double n = first + i;
        // Zero without a sign; within the range in spite of rounding.
        const double value = interval < 1.0 ? n / std::round(1.0 / interval) : n * interval;
        values.append(std::clamp(value + 0.0, lowest, highest));
    }
    return values;
}

TickPlan linearPlan(const TickRequest &request, double interval)
{
    TickPlan plan;
    plan.majors = multiples(request.lowest, request.highest, interval);
    const NumberLabels labels(request.lowest, request.highest, interval, AxisUnit(request.unit));
    for (const double value : qAsConst(plan.majors))
        plan.texts.append(labels.text(value));
    plan.unit = labels.unit();
    plan.common = labels.common();
    plan.prefix = labels.prefix();
    return plan;
}

} // namespace

namespace {

// A short axis: nobody can read a scale from a single text. With the greatest interval that gives two, from a least one.
std::pair<TickPlan, RoundIntervals> closerPlan(TickRequest request, double least)
{
    const double span = request.highest - request.lowest;
    request.spacing = request.leastSpacing;
    request.gap /= 2.0;
    RoundIntervals chosen(least);
    TickPlan plan;
    for (RoundIntervals interval(least); interval.value() <= span; interval.next()) {
        const TickPlan closer = linearPlan(request, interval.value());
        if (closer.majors.size() < 2)
            break;
        if (!request.hasRoomFor(closer))
            continue;
        plan = closer;
        chosen = interval;
    }
    return {plan, chosen};
}

} // namespace

double numberStep(double number)
{
    number = std::abs(number);
    return std::nextafter(number, std::numeric_limits<double>::infinity()) - number;
}

bool TickRequest::hasRoomFor(const TickPlan &plan) const
{
    const Scale along = places();
    double lastPlace = 0.0;
    double lastEnd = 0.0;
    for (int i = 0; i < plan.majors.size(); ++i) {
        const double place = along.place(plan.majors.at(i));
        // A text beside an end may have to be moved inside.
        const double half = extent(plan.texts.at(i)) / 2.0;
        const double center = std::min(std::max(place, half), length - half);
        if (i > 0 && (place - lastPlace < spacing || center - half < lastEnd + gap))
            return false;
        lastPlace = place;
        lastEnd = center + half;
    }
    return true;
}

QVector<double> minorMultiples(const TickRequest &request, const QVector<double> &majors, double interval)
{
    const Scale scale = request.places();
    const double span = request.highest - request.lowest;
    // The narrowest place of any scale is at its upper end.
    const double narrowest =
        scale.place(request.highest) - scale.place(std::max(request.highest - interval, request.lowest));
    const double resolution = std::max(
        numberStep(std::max(std::abs(request.lowest), std::abs(request.highest))), request.resolution);
    if (!(interval >= resolution) || narrowest < minorSpacing || span / interval > mostTicks)
        return {};
    QVector<double> minors = multiples(request.lowest, request.highest, interval);
    const auto isMajor = [&](double value) {
        return std::any_of(majors.begin(), majors.end(),
                           [&](double major) { return std::abs(major - value) < interval / 2.0; });
    };
    minors.erase(std::remove_if(minors.begin(), minors.end(), isMajor), minors.end());
    return minors;
}

TickPlan linearTicks(const TickRequest &request)
{
    if (!request.isUsable() || request.interval < 0.0)
        return {};
    const auto minors = [&request](const QVector<double> &majors, double interval, int parts) {
        // More than can be are none.
        parts = request.minorTicks < 0 ? parts : std::min(request.minorTicks, mostTicks) + 1;
        return parts > 1 ? minorMultiples(request, majors, interval / parts) : QVector<double>();
    };
    if (request.interval > 0.0) {
        TickPlan plan = linearPlan(request, request.interval);
        plan.minors = minors(plan.majors, request.interval, 5);
        return plan;
    }
    const double span = request.highest - request.lowest;
    const double greatest = std::max(std::abs(request.lowest), std::abs(request.highest));
    // Ticks at steps that the numbers can hardly take would not be evenly spaced.
    constexpr double leastSteps = 4.0;
    const double leastDistance = leastSteps * std::max(numberStep(greatest), request.resolution);
    const double finest = std::max(span * std::min(request.spacing / request.length, 1.0), leastDistance);
    TickPlan plan;
    bool hasRoom = false;
    for (RoundIntervals interval(std::max(finest, std::numeric_limits<double>::min()));
         interval.value() <= span; interval.next()) {
        plan = linearPlan(request, interval.value());
        hasRoom = request.hasRoomFor(plan);
        if (!hasRoom && plan.majors.size() > 1)
            continue;
        plan.minors = minors(plan.majors, interval.value(), interval.parts());
        break;
    }
    if ((hasRoom && plan.majors.size() > 1) || !(request.leastSpacing > 0.0))
        return plan;
    const double closest = std::max({span * std::min(request.leastSpacing / request.length, 1.0),
                                     leastDistance, std::numeric_limits<double>::min()});
    const auto [closer, interval] = closerPlan(request, closest);
    if (closer.majors.isEmpty())
        return plan;
    plan = closer;
    plan.minors = minors(plan.majors, interval.value(), interval.parts());
    return plan;
}

namespace {

constexpr int fewLabels = 6;

double powerOfTen(int exponent)
{
    return exponent < 0 ? 1.0 / std::pow(10.0, -exponent) : std::pow(10.0, exponent);
}

// The mantissas of every stride-th decade that lie in the range.
QVector<double> decadeValues(const TickRequest &request, const QVector<int> &mantissas, int stride)
{
    QVector<double> values;
    const int first = int(std::floor(std::log10(request.lowest) - 1e-9));
    const int last = int(std::ceil(std::log10(request.highest) + 1e-9));
    for (int exponent = first; exponent <= last; ++exponent) {
        if (exponent % stride != 0)
            continue;
        for (const int mantissa : mantissas) {
            const double value =
                exponent < 0 ? mantissa / std::pow(10.0, -exponent) : mantissa * powerOfTen(exponent);
            const double rounding = 1e-12 * value;
            if (std::isfinite(value) && value >= request.lowest - rounding &&
                value <= request.highest + rounding)
                values.append(value);
        }
    }
    return values;
}

// Of a logarithmic axis' decades; all that is left to say are 2 to 9, or the decades between those with a text.
QVector<double> decadeMinors(const TickRequest &request, const QVector<double> &majors)
{
    if (request.minorTicks == 0)
        return {};
    const double decade = request.length / (std::log10(request.highest) - std::log10(request.lowest));
    const double narrowest = decade * std::log10(10.0 / 9.0);
    QVector<double> minors = narrowest >= 2.0         ? decadeValues(request, {1, 2, 3, 4, 5, 6, 7, 8, 9}, 1)
                             : decade >= minorSpacing ? decadeValues(request, {1}, 1)
                                                      : QVector<double>();
    const auto isMajor = [&](double value) { return majors.contains(value); };
    minors.erase(std::remove_if(minors.begin(), minors.end(), isMajor), minors.end());
    return minors;
}

} // namespace

TickPlan logarithmicTicks(const TickRequest &request)
{
    if (!request.isUsable() || !(request.lowest > 0.0))
        return {};
    const AxisUnit unit(request.unit);
    if (decadeValues(request, {1, 2, 5}, 1).size() < 3)
        return linearTicks(request);
    TickPlan plan;
    plan.unit = unit.symbol();
    // Of a decade or two there is more to say than the usual three numbers.
    const bool hasFew = decadeValues(request, {1, 2, 5}, 1).size() < fewLabels;
    static const QVector<int> densities[] = {
        {1, 2, 3, 4, 5, 6, 7, 8, 9}, {1, 2, 3, 5, 7}, {1, 2, 3, 5}, {1, 2, 5}, {1}};
    for (const QVector<int> &mantissas : densities) {
        if (mantissas.size() > 3 && !hasFew)
            continue;
        for (const int stride : {1, 2, 3, 6, 12, 30, 60, 120, 300}) {
            plan.majors = decadeValues(request, mantissas, stride);
            plan.texts.clear();
            for (const double value : qAsConst(plan.majors))
                plan.texts.append(shortNumber(value, unit));
            if (request.hasRoomFor(plan)) {
                plan.minors = decadeMinors(request, plan.majors);
                return plan;
            }
            if (mantissas.size() > 1)
                break;
        }
    }
    return plan;
}

} // namespace graph
