#pragma once

#include "raster/RecordedStrokes.h"
#include "view/base/ImageChild.h"
#include "view/base/PaintingNode.h"
#include "view/base/ShiftedItem.h"

#include <QImage>
#include <QSGNode>

#include <vector>

namespace graph {

// Shows strokes on the software scene graph without a layer, which would have to be cleared, painted and
// blended for each of their changes: they are painted into the window itself. With the second frame in a row in which
// they do not change, images no larger than they are take their place, each of some columns, so that what moves above
// them costs only the pixels that it uncovers, and the renderer passes by where there are none. A single such frame, as
// between the values of a slow instrument, does not pay for images, nor for the memory of them, of which all lines
// together take no more than a device has. A transform node for the reason that StampNode is one.
class StrokeNode : public QSGTransformNode
{
public:
    explicit StrokeNode(QQuickWindow *window);
    ~StrokeNode() override;

    // size: of the item, beyond which nothing is shown.
    void show(const RecordedStrokes &strokes, const QSize &size);

    // Comes before each frame.
    void preprocess() override;

private:
    void paint(QPainter *painter, const QRegion &region);
    void showPainting();
    void showImages();
    void showImage(const QImage &image, const QPoint &place);
    void removeImages();

    QQuickWindow *m_window;
    RecordedStrokes m_strokes;
    QSize m_size; // of the item
    PaintingNode m_painting;
    QImage m_layer; // of the whole item, where it is transformed or translucent
    std::vector<ImageChild> m_images;
    qint64 m_imageBytes = 0;
    int m_framesAtRest = 0; // while it is painted
};

bool isSoftwareSceneGraph(const QQuickWindow &window);

// Whether what an item paints needs nothing but itself: no colour behind it, no scale, no smoothing.
bool isPaintedPlainly(const QQuickPaintedItem &item);

// old where it is such a node, or else a new one in its place.
template <typename Node> Node *nodeOf(ShiftedItem *item, QSGNode *old)
{
    auto *node = dynamic_cast<Node *>(old);
    if (node)
        return node;
    delete old;
    item->forgetLayer();
    return new Node(item->window());
}

// The node of an item that paints only strokes, for its updatePaintNode; null where it has to be a layer, old
// then being what goes on as the layer's node.
QSGNode *strokedNode(ShiftedItem *item, QSGNode *&old);

// old, unless it is such a node.
QSGNode *withoutStrokes(QSGNode *old);

} // namespace graph
