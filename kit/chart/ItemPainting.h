#pragma once

class QPainter;
class QQuickItem;

namespace graph {

// Draw a Rectangle and a Text as their properties say, in their own coordinates.
void paintRectangle(const QQuickItem &item, QPainter *painter);
void paintText(const QQuickItem &item, QPainter *painter);

} // namespace graph
