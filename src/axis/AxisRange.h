#pragma once

#include "common/Scale.h"

namespace graph {

// The full range of an axis and what of it is visible, as numbers: the caller announces changes. The visible
// edges are set as such, or as fractions of the full range by a zoom.
class AxisRange
{
public:
    struct Edges
    {
        double lowest;
        double highest;
    };

    double minValue() const { return m_minValue; }
    double maxValue() const { return m_maxValue; }
    double extent() const { return m_maxValue - m_minValue; }
    double minVisible() const { return m_minVisible; }
    double maxVisible() const { return m_maxVisible; }
    double visibleExtent() const { return m_maxVisible - m_minVisible; }
    double lowerBound() const { return m_lowerBound; }
    double upperBound() const { return m_upperBound; }
    bool isScalable() const { return m_scalable; }

    // The visible span that a change of the full range keeps; with 0 or less the bounds are kept instead.
    double span() const { return m_span; }
    bool hasSpan() const { return m_span > 0.0; }
    void setSpan(double span) { m_span = span; }

    // How values are spread over the range. The visible edges stay until the bounds are set again.
    ScaleKind scaleKind() const { return m_scaleKind; }
    void setScaleKind(ScaleKind kind) { m_scaleKind = kind; }

    // The places of values in the full range, and those of the shown values in a decreasing order.
    Scale fullScale() const { return Scale::between(m_scaleKind, {m_minValue, m_maxValue}, extent(), 1.0); }
    double mirrored(double value) const;
    // The ends of the full range, of a logarithmic one those of the part that can be shown.
    ScaleEnds shownEnds() const;

    // Requests for an end of the full range. They may have to wait; the last one counts.
    void requestMinValue(double minValue) { m_requestedMinValue = minValue; }
    void requestMaxValue(double maxValue) { m_requestedMaxValue = maxValue; }
    double requestedMinValue() const { return m_requestedMinValue; }
    double requestedMaxValue() const { return m_requestedMaxValue; }

    // Move an end of the full range. A visible span that begins, or ends, there moves along: true then. The
    // other visible edges are left to the caller, see visibleInside() and the bounds.
    bool moveMinValue(double minValue);
    bool moveMaxValue(double maxValue);

    // The visible edges with their distance, moved into the full range as far as that has room.
    Edges visibleInside() const;

    void setMinVisible(double minVisible) { m_minVisible = minVisible; }
    void setMaxVisible(double maxVisible) { m_maxVisible = maxVisible; }

    // Put a visible edge to a fraction of the full range, or to its end unless scalable; true when the edge
    // moved.
    bool setLowerBound(double bound);
    bool setUpperBound(double bound);
    void setScalable(bool scalable) { m_scalable = scalable; }

private:
    double m_minValue = 0.0;
    double m_maxValue = 1.0;
    double m_minVisible = 0.0;
    double m_maxVisible = 1.0;
    double m_lowerBound = 0.0;
    double m_upperBound = 1.0;
    double m_requestedMinValue = 0.0;
    double m_requestedMaxValue = 1.0;
    double m_span = 0.0;
    bool m_scalable = true;
    ScaleKind m_scaleKind = ScaleKind::Linear;
};

} // namespace graph
