#include "cursors/CursorDirection.h"

#include "view/base/AbstractPlot.h"
#include "view/zoom/ZoomRect.h"

namespace graph {

const CursorDirection CursorDirection::alongX{
    &AbstractPlot::axisX,
    SIGNAL(axisXChanged(ValueAxis *)),
    &AbstractPlot::mapToItemX,
    &AbstractPlot::mapFromItemX,
    &ZoomRect::mapToItemX,
    &QQuickItem::width,
    &QQuickItem::height,
    [](int place, int length) { return QLine(place, 0, place, length); },
    true};

const CursorDirection CursorDirection::alongY{
    &AbstractPlot::axisY,
    SIGNAL(axisYChanged(ValueAxis *)),
    &AbstractPlot::mapToItemY,
    &AbstractPlot::mapFromItemY,
    &ZoomRect::mapToItemY,
    &QQuickItem::height,
    &QQuickItem::width,
    [](int place, int length) { return QLine(0, place, length, place); },
    false};

} // namespace graph
