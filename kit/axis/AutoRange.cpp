#include "kit/axis/AutoRange.h"

#include <algorithm>

namespace graph {

namespace {

// Shares of the data's span.
constexpr double headRoom = 0.05;
constexpr double tolerableFreeRoom = 0.4;
constexpr double nearZero = 0.25;
constexpr double largestReach = 0.2;
// Nearer to 0 there are no round intervals of a tenth of what is shown: it is 0.
constexpr double leastLinear = 1e-290;
// On a logarithmic scale.
constexpr double nearestToZero = 1e-305;

double powerOfTen(double exponent)
{
    return exponent < 0.0 ? 1.0 / std::pow(10.0, -exponent) : std::pow(10.0, exponent);
}

// 1, 2 or 5 times a power of ten, at most `value`.
double roundDown(double value)
{
    const double power = powerOfTen(std::floor(std::log10(value) + 1e-9));
    const double mantissa = value / power * (1.0 + 1e-9);
    return power * (mantissa >= 5.0 ? 5.0 : mantissa >= 2.0 ? 2.0 : 1.0);
}

double roundUp(double value)
{
    const double below = roundDown(value);
    if (below >= value * (1.0 - 1e-9))
        return below;
    const double mantissa = below / powerOfTen(std::floor(std::log10(below) + 1e-9));
    return mantissa > 1.5 && mantissa < 3.0 ? below * 2.5 : below * 2.0;
}

double withoutTinyParts(double value)
{
    return std::abs(value) < leastLinear ? 0.0 : value;
}

// The data with some room around them, between round ends. Data of one sign stay on their side of 0, which is shown
// where it is near.
ScaleEnds roomyLinear(double lowest, double highest)
{
    const double room = (highest - lowest) * headRoom;
    const double interval = roundDown((highest - lowest) / 8.0);
    double begin = std::floor((lowest - room) / interval) * interval;
    double end = std::ceil((highest + room) / interval) * interval;
    if (lowest >= 0.0)
        begin = lowest < highest * nearZero ? 0.0 : std::max(begin, 0.0);
    if (highest <= 0.0)
        end = highest > lowest * nearZero ? 0.0 : std::min(end, 0.0);
    return {begin + 0.0, end + 0.0};
}

ScaleEnds wanted(const AutoRangeRequest &request, double lowest, double highest)
{
    if (lowest == highest) {
        // A single level in the middle of something.
        const double around = lowest == 0.0 ? 1.0 : std::abs(lowest) / 2.0;
        return request.scale == ScaleKind::Linear
                   ? roomyLinear(lowest - around, highest + around)
                   : ScaleEnds{roundDown(std::max(lowest / 3.0, nearestToZero)),
                               roundUp(std::min(highest * 3.0, farthestEnd))};
    }
    if (!request.hasHeadRoom)
        return {lowest, highest};
    if (request.scale == ScaleKind::Linear)
        return roomyLinear(lowest, highest);
    const double factor = std::pow(10.0, (std::log10(highest) - std::log10(lowest)) * headRoom);
    return {roundDown(std::max(lowest / factor, nearestToZero)),
            roundUp(std::min(highest * factor, farthestEnd))};
}

// By how much of what the axis shows an end may be farther out than the data.
double tolerance(const AutoRangeRequest &request)
{
    if (request.onlyGrows)
        return std::numeric_limits<double>::infinity();
    return request.hasHeadRoom ? tolerableFreeRoom : 0.0;
}

// The present ends, as far as the data are within them and near enough.
ScaleEnds adapted(const AutoRangeRequest &request, const ScaleEnds &target, double lowest, double highest)
{
    const bool isLinear = request.scale == ScaleKind::Linear;
    const ScaleEnds present =
        isLinear ? *request.present : positivePart(request.present->begin, request.present->end);
    // Distances as the axis shows them.
    const Scale scale = Scale::between(request.scale, target, target.end - target.begin, 1.0);
    const double most = tolerance(request);
    const double baseline =
        request.onlyGrows ? std::numeric_limits<double>::quiet_NaN() : request.data.baseline;
    const bool keepsBegin = present.begin <= lowest && lowest != baseline &&
                            scale.fraction(lowest) - scale.fraction(present.begin) <= most;
    const bool keepsEnd = present.end >= highest && highest != baseline &&
                          scale.fraction(present.end) - scale.fraction(highest) <= most;
    return {keepsBegin ? present.begin : target.begin, keepsEnd ? present.end : target.end};
}

// Ends that are too near to the data for what is drawn around those move away, but for one that bars rest on.
ScaleEnds withReach(const AutoRangeRequest &request, const ScaleEnds &ends, double lowest, double highest)
{
    if (!(request.reach > 0.0) || !(lowest < highest))
        return ends;
    const double share = std::min(request.reach, largestReach);
    // In fractions of the range of the data.
    const Scale scale = Scale::between(request.scale, {lowest, highest}, highest - lowest, 1.0);
    double begin = scale.fraction(ends.begin);
    double end = scale.fraction(ends.end);
    const double tooNear = share * (end - begin) * (1.0 - 1e-9);
    const bool movesBegin = -begin < tooNear && ends.begin != request.data.baseline;
    const bool movesEnd = end - 1.0 < tooNear && ends.end != request.data.baseline;
    if (movesBegin && movesEnd) {
        begin = -share / (1.0 - 2.0 * share);
        end = 1.0 - begin;
    } else if (movesBegin) {
        begin = -share * end / (1.0 - share);
    } else if (movesEnd) {
        end = (1.0 - share * begin) / (1.0 - share);
    }
    return {movesBegin ? scale.valueAt(begin) : ends.begin, movesEnd ? scale.valueAt(end) : ends.end};
}

} // namespace

ScaleEnds autoRange(const AutoRangeRequest &request)
{
    const bool isLinear = request.scale == ScaleKind::Linear;
    const double least =
        isLinear || request.data.lowest > 0.0 ? request.data.lowest : request.data.leastPositive;
    const double most = request.data.highest;
    const bool isUsable =
        std::isfinite(least) && std::isfinite(most) && least <= most && (isLinear || least > 0.0);
    if (!isUsable)
        return request.present ? *request.present : isLinear ? ScaleEnds{0.0, 1.0} : ScaleEnds{1.0, 10.0};
    const double nearest = isLinear ? -farthestEnd : nearestToZero;
    const double lowest = std::clamp(isLinear ? withoutTinyParts(least) : least, nearest, farthestEnd);
    const double highest = std::clamp(isLinear ? withoutTinyParts(most) : most, nearest, farthestEnd);
    ScaleEnds target = wanted(request, lowest, highest);
    if (lowest < highest && lowest == request.data.baseline)
        target.begin = lowest;
    if (lowest < highest && highest == request.data.baseline)
        target.end = highest;
    return withReach(request, request.present ? adapted(request, target, lowest, highest) : target, lowest,
                     highest);
}

} // namespace graph
