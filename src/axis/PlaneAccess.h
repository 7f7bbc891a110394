#pragma once

#include <QList>

class QQuickItem;
class ValueAxis;
class XYScale;

// Axes refer to the planes they are drawn on without knowing their class, which is built on top of the axes;
// the plane's own source file answers these questions for them.
namespace graph {

// The plane as an item, to watch its lifetime and read its size; null for null.
QQuickItem *planeItem(XYScale *plane);

// The way back; null for null and for an item that is no plane any more.
XYScale *itemPlane(QQuickItem *item);

// The axes drawn on the plane, so that labels inside the plot area keep clear of each other; empty for null.
QList<ValueAxis *> planeAxes(XYScale *plane);

} // namespace graph
