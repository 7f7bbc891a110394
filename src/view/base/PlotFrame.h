#pragma once

#include "common/PixelMapping.h"

#include <QRectF>

class QPainter;

namespace graph {

// What a plot paints one frame with.
struct PlotFrame
{
    QPainter *painter = nullptr;
    PixelMapping mapping;
    QRectF visibleRect; // in data units, y being the lowest visible value
};

} // namespace graph
