#pragma once

#include "common/SafeInteger.h"
#include "common/Scale.h"

#include <limits>

namespace graph {

// The values of one axis on the pixels of an item, in one direction. A place that misses a whole pixel only
// by rounding is that whole pixel, so that a tick, a sample and a cursor at one value share a pixel whichever
// sum or product the value came from.
class PixelScale
{
public:
    // `begin` falls on pixel 0, `begin + range` on the last one of `size` pixels.
    PixelScale(double begin, double range, double size)
        : PixelScale(Scale(begin, range, size - 1.0), std::numeric_limits<double>::epsilon())
    {
    }

    // Of an axis from `ends.begin` on pixel 0 to `ends.end` on the last one; range: their distance.
    PixelScale(ScaleKind kind, const ScaleEnds &ends, double range, double size)
        : PixelScale(Scale::between(kind, ends, range, size - 1.0), std::numeric_limits<double>::epsilon())
    {
    }

    // epsilon: the relative distance of neighbouring numbers of the type that the scale was computed in.
    PixelScale(const Scale &scale, double epsilon)
        : m_scale(scale)
        , m_rounding(roundingOf(scale, epsilon))
    {
    }

    // Item coordinates, not rounded apart from that. Rises, or falls, with the value throughout: the distance
    // that counts as rounding is the same everywhere, so that columns can be searched.
    double coordinate(double value) const { return wholePixelNear(m_scale.place(value)); }
    double value(double coordinate) const { return m_scale.value(coordinate); }

    // The same of several values in their place, side by side where the axis is linear.
    template <std::size_t count> void toCoordinates(double (&values)[count]) const
    {
        if (!isLinear()) {
            for (double &each : values)
                each = coordinate(each);
            return;
        }
        for (double &each : values)
            each = m_scale.linearPlace(each);
        for (double &each : values)
            each = wholePixelNear(each);
    }

    // Whole pixels of data values, clamped, see graph::pixel() and graph::roundedPixel(): those of
    // coordinate(value), without computing it. Away from zero by the rounding, a place just short of a whole
    // pixel reaches it and no other does.
    int pixel(double value) const { return pixelAt(m_scale.place(value)); }
    // Of a linear scale, without asking for its kind.
    int linearPixel(double value) const { return pixelAt(m_scale.linearPlace(value)); }
    int roundedLinearPixel(double value) const { return graph::roundedPixel(m_scale.linearPlace(value)); }

    // Whether pixel(value) <= last on a linear scale, for searches: what does not depend on the value is known
    // beforehand.
    auto upTo(int last) const
    {
        // Truncation is toward zero: pixel 0 has two sides. NaN counts as pixel 0.
        const bool isBelowZero = last < 0;
        const double rounding = std::copysign(m_rounding, last);
        const double end = isBelowZero         ? last
                           : last < pixelLimit ? last + 1.0
                                               : std::numeric_limits<double>::infinity();
        return
            [begin = m_scale.begin(), density = m_scale.density(), isBelowZero, rounding, end](double value) {
                const double place = (value - begin) * density + rounding;
                return isBelowZero ? place <= end : !(place >= end);
            };
    }

    // Where the next pixel begins.
    double border(int last) const
    {
        const double next =
            last < pixelLimit ? last + (last < 0 ? 0.0 : 1.0) : std::numeric_limits<double>::infinity();
        return m_scale.value(next - std::copysign(m_rounding, last));
    }

    double density() const { return m_scale.density(); }
    bool isLinear() const { return m_scale.isLinear(); }

private:
    int pixelAt(double place) const { return graph::pixel(place + std::copysign(m_rounding, place)); }

    static double farthest(const Scale &scale)
    {
        return std::max(std::abs(scale.begin()), std::abs(scale.begin() + scale.range()));
    }

    static double roundingOf(const Scale &scale, double epsilon)
    {
        // Values and ends of ranges are themselves sums and products, of a few operations each.
        constexpr double roundings = 8.0;
        const double rounding = roundings * (std::numeric_limits<double>::epsilon() * farthest(scale) *
                                                 std::abs(scale.density()) +
                                             epsilon * std::abs(scale.length()));
        // Where numbers are as coarse as pixels, most places must still be truncated.
        constexpr double most = 0.125;
        return rounding < most ? rounding : most;
    }

    double wholePixelNear(double coordinate) const
    {
        // Adding this leaves no bits for a fraction: it rounds to the nearest whole number without a branch
        // or a call. Larger coordinates than that leaves exact have no fraction either, or are far outside
        // every item.
        constexpr double wholeNumbers = 6755399441055744.0; // 1.5 * 2^52
        const double whole = (coordinate + wholeNumbers) - wholeNumbers;
        // One comparison, not one for each side: a processor guesses the side wrong every second time.
        const double way = whole - coordinate;
        const double beyond = coordinate + std::copysign(m_rounding, way) - whole;
        const bool isNear = beyond * way >= 0.0;
        return isNear ? whole : coordinate;
    }

    Scale m_scale;
    double m_rounding;
};

} // namespace graph
