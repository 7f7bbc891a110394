#pragma once

class QObject;
class QQuickItem;
class ZoomRect;

namespace graph {

// The zoom rectangle that an item offers its children as a property of that name; null where there is none.
ZoomRect *zoomRectOf(const QQuickItem *item);

// Calls the slot of that signature whenever the item offers another one, where its property tells. Asked
// again for the same item it changes nothing.
void followZoomRect(const QQuickItem *item, QObject *follower, const char *slot);

} // namespace graph
