#pragma once

class QQuickItem;
class XYScale;

// Axes refer to the planes they are drawn on without knowing their class, which is built on top of the axes;
// the plane's own source file answers these questions for them.
namespace graph {

// The plane as an item, to watch its lifetime and read its size; null for null.
QQuickItem *planeItem(XYScale *plane);

// The way back; null for null and for an item that is no plane any more.
XYScale *itemPlane(QQuickItem *item);

} // namespace graph
