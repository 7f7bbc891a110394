#pragma once

#include <QRegion>
#include <QSGRenderNode>
#include <QSize>
#include <QTransform>

#include <functional>

class QPainter;
class QQuickWindow;

namespace graph {

// Whether pixels stay pixels.
bool isWholeMove(const QTransform &transform);
// The same of all that is above a node.
bool isMovedOnly(const QSGNode *node);

// Paints into the window itself, on the software scene graph: as much of it as a frame needs, at the place
// and with the opacity that the scene gives it. Not owned by its parent.
class PaintingNode : public QSGRenderNode
{
public:
    // In coordinates of the item. With an opacity below 1, or transformed, the painter has that. It is clipped
    // to the region, which is one of the window.
    using Paint = std::function<void(QPainter *, const QRegion &region)>;

    PaintingNode(QQuickWindow *window, const Paint &paint);

    const QSize &size() const { return m_size; }
    // What is painted has changed; it is within that size.
    void repaint(const QSize &size);

    RenderingFlags flags() const override { return BoundedRectRendering; }
    QRectF rect() const override { return QRectF(QPointF(), m_size); }
    void render(const RenderState *state) override;

private:
    QQuickWindow *m_window;
    Paint m_paint;
    QSize m_size;
};

} // namespace graph
