#pragma once

class QPainter;
class QQuickItem;

namespace graph {

// Draws what a Chart has behind everything else: the colours of its theme. A plain view has nothing there.
void paintBackdrop(const QQuickItem &view, QPainter *painter);

// Draw a Rectangle and a Text as their properties say, in their own coordinates.
void paintRectangle(const QQuickItem &item, QPainter *painter);
void paintText(const QQuickItem &item, QPainter *painter);

} // namespace graph
