#pragma once

#include "common/SafeInteger.h"

#include <QRectF>

#include <cmath>

namespace graph {

// Where the values of an axis stand in the plot rectangle of a plane, in whole pixels; the same mapping as that of the
// plots in that rectangle.
struct AxisGeometry
{
    QRectF rect;
    bool horizontal;
    double minVisible;
    double maxVisible;
    bool mirrored;    // values run backwards ...
    double mirrorSum; // ... and value and position add up to this

    bool isDrawable() const
    {
        const double range = maxVisible - minVisible;
        return !rect.isEmpty() && std::isfinite(range) && range != 0.0;
    }

    // The column or row of a value; false when it lies outside the rectangle.
    bool position(double value, int *position) const
    {
        const double range = maxVisible - minVisible;
        const double place = mirrored ? mirrorSum - value : value;
        const double length = (horizontal ? rect.width() : rect.height()) - 1.0;
        const int offset = pixel((horizontal ? place - minVisible : maxVisible - place) * length / range);
        if (offset < 0 || offset > length)
            return false;
        *position = pixel(horizontal ? rect.left() : rect.top()) + offset;
        return true;
    }
};

} // namespace graph
