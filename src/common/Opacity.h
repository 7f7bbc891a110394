#pragma once

#include <QColor>

namespace graph {

// Clamps to 0..1; NaN gives 0.
inline double boundedOpacity(double opacity)
{
    return opacity > 0.0 ? (opacity < 1.0 ? opacity : 1.0) : 0.0;
}

// The colour with its own alpha multiplied by the opacity, which is clamped to 0..1.
inline QColor translucent(QColor color, double opacity)
{
    color.setAlphaF(color.alphaF() * boundedOpacity(opacity));
    return color;
}

} // namespace graph
