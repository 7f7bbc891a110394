#pragma once

namespace graph {

// Where the values of an axis lie along a stretch that shows a part of them, and back: `begin` at 0, `begin +
// range` at `length`. With a length of 1 places are fractions of the visible range, with the distance between
// the outer pixels of an item they are pixels. All that turns values into places and back goes through this
// class, so that another kind of scale has to be written only here; today every scale is linear.
//
// Plain IEEE arithmetic: a range or length of 0 gives infinities or NaN.
class Scale
{
public:
    Scale(double begin, double range, double length)
        : m_begin(begin)
        , m_density(length / range)
        , m_range(range)
        , m_length(length)
    {
    }

    double place(double value) const { return (value - m_begin) * m_density; }
    double value(double place) const { return m_begin + place * m_range / m_length; }

    // The same in fractions of the range, for any length.
    double fraction(double value) const { return (value - m_begin) / m_range; }
    double valueAt(double fraction) const { return m_begin + m_range * fraction; }

    double begin() const { return m_begin; }
    // Of the stretch, for each unit of the axis.
    double density() const { return m_density; }
    double range() const { return m_range; }
    double length() const { return m_length; }

private:
    double m_begin;
    double m_density;
    double m_range;
    double m_length;
};

} // namespace graph
