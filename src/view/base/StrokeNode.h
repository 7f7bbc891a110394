#pragma once

#include "raster/RecordedStrokes.h"

#include <QQuickPaintedItem>
#include <QSGNode>

#include <memory>

class QQuickWindow;
class QSGImageNode;
class QSGTexture;

namespace graph {

class PaintingNode;

// Shows strokes on the software scene graph without a layer, which would have to be cleared, painted and
// blended for each of their changes: they are painted into the window itself. Once a frame comes in which
// they do not change, an image no larger than they are takes their place, so that what moves above them costs
// only the pixels that it uncovers. A transform node for the reason that StampNode is one.
class StrokeNode : public QSGTransformNode
{
public:
    StrokeNode(QQuickWindow *window);
    ~StrokeNode() override;

    // size: of the item, beyond which nothing is shown.
    void show(const RecordedStrokes &strokes, const QSize &size);

    // Comes before each frame.
    void preprocess() override;

private:
    bool isMovedOnly() const;
    void showPainting();
    void showImage();
    void removeImage();

    QQuickWindow *m_window;
    RecordedStrokes m_strokes;
    std::unique_ptr<PaintingNode> m_painting;
    std::unique_ptr<QSGTexture> m_texture;
    std::unique_ptr<QSGImageNode> m_image;
    bool m_isNew = false; // since the last frame
};

// Whether what an item paints needs nothing but itself: no colour behind it, no scale, no smoothing.
bool isPaintedPlainly(const QQuickPaintedItem &item);

// The node of an item that paints only strokes, for its updatePaintNode; null where it has to be a layer, old
// then being what goes on as the layer's node.
QSGNode *strokedNode(QQuickPaintedItem *item, QSGNode *&old);

// old, unless it is such a node.
QSGNode *withoutStrokes(QSGNode *old);

} // namespace graph
