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

    // Whole pixels of data values: truncated toward zero and clamped, see graph::pixel().
    int pixel(double value) const { return graph::pixel(coordinate(value)); }

    double density() const { return m_scale.density(); }

private:
    static double roundingOf(const Scale &scale, double epsilon)
    {
        // Values and ends of ranges are themselves sums and products, of a few operations each.
        constexpr double roundings = 8.0;
        const double farthest = std::max(std::abs(scale.begin()), std::abs(scale.begin() + scale.range()));
        const double rounding =
            roundings * (std::numeric_limits<double>::epsilon() * farthest * std::abs(scale.density()) +
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
        return std::abs(coordinate - whole) <= m_rounding ? whole : coordinate;
    }

    Scale m_scale;
    double m_rounding;
};

} // namespace graph
