#pragma once

#include "common/Export.h"

#include <cmath>
#include <limits>

namespace graph {

// How the values of an axis are spread along it: by their differences, or by their ratios.
enum class ScaleKind : unsigned char { Linear, Logarithmic };

struct ScaleEnds
{
    double begin;
    double end;
};

// The part of a range that a logarithmic scale can show, in the same direction: all of it where both ends are
// positive, else the three decades up to the greater end; 1 to 10 where that is not positive either.
GRAPH_CHARTS_EXPORT ScaleEnds positivePart(double begin, double end);

// Where the values of an axis lie along a stretch that shows a part of them, and back: `begin` at 0, `begin +
// range` at `length`. With a length of 1 places are fractions of the visible range, with the distance between
// the outer pixels of an item they are pixels. All that turns values into places and back goes through this
// class, so that a kind of scale has to be written only here.
//
// Plain IEEE arithmetic: a range or length of 0 gives infinities or NaN. On a logarithmic scale 0 and negative
// values lie infinitely far before all others.
class GRAPH_CHARTS_EXPORT Scale
{
public:
    // A linear one.
    Scale(double begin, double range, double length)
        : Scale(ScaleKind::Linear, {begin, begin + range}, begin, range, length)
    {
    }

    // Of either kind, with begin + range == end but for rounding. Of a logarithmic one the ends are the
    // positive part.
    static Scale between(ScaleKind kind, const ScaleEnds &ends, double range, double length);

    ScaleKind kind() const { return m_kind; }
    bool isLinear() const { return m_kind == ScaleKind::Linear; }

    double place(double value) const { return linearPlace(transformed(value)); }
    double value(double place) const
    {
        return isLinear() ? m_begin + place * m_range / m_length : logarithmicValue(place / m_length);
    }

    // The same in fractions of the range, for any length.
    double fraction(double value) const { return (transformed(value) - m_begin) / m_range; }
    double valueAt(double fraction) const
    {
        return isLinear() ? m_begin + m_range * fraction : logarithmicValue(fraction);
    }

    // place() of a linear scale, without asking for the kind: for the innermost loops.
    double linearPlace(double value) const { return (value - m_begin) * m_density; }

    // In the unit in which the scale is even: that of the axis, or the natural logarithm of its values.
    double begin() const { return m_begin; }
    double range() const { return m_range; }
    // Of the stretch, for each such unit.
    double density() const { return m_density; }
    double length() const { return m_length; }

private:
    Scale(ScaleKind kind, const ScaleEnds &ends, double begin, double range, double length)
        : m_begin(begin)
        , m_density(length / range)
        , m_range(range)
        , m_length(length)
        , m_ends(ends)
        , m_kind(kind)
    {
    }

    double transformed(double value) const { return isLinear() ? value : logarithm(value); }
    static double logarithm(double value)
    {
        return value <= 0.0 ? -std::numeric_limits<double>::infinity() : std::log(value);
    }
    double logarithmicValue(double fraction) const;

    double m_begin;
    double m_density;
    double m_range;
    double m_length;
    ScaleEnds m_ends; // values of the axis
    ScaleKind m_kind;
};

} // namespace graph
