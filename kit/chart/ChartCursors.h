#pragma once

#include "cursors/CursorLook.h"

#include <functional>

class QQuickItem;
class ValueAxis;

namespace graph {

class ChartTheme;

// The cursors among the children of a chart.

// Their colours and font, and the texts of distances along the axis that they follow.
void dressCursors(const QQuickItem &chart, const ChartTheme &theme,
                  const std::function<QString(const ValueAxis *, double)> &distanceText);

// Of a chart that goes.
void undressCursors(const QQuickItem &chart);

// Those that came before the data: their texts would name a place where they are not.
void placeWaitingCursors(const QQuickItem &chart);

} // namespace graph
