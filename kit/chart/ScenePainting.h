#pragma once

#include <QHash>
#include <QImage>
#include <QVector>

class QQuickItem;

namespace graph {

class Canvas;

// The visible items in and below `root` that only the scene graph can draw (images, canvases, shaders): a
// picture of each has to be taken before.
QVector<QQuickItem *> itemsToGrab(QQuickItem *root);

// Draws root and what lies in it in the order of the scene graph: painted items with their own paint(),
// rectangles and texts by their properties, others from the pictures.
void paintScene(QQuickItem *root, const QHash<QQuickItem *, QImage> &pictures, Canvas *canvas);

} // namespace graph
