#pragma once

#include <QRect>
#include <QRegion>
#include <QSGRenderNode>
#include <QTransform>

#include <functional>

class QPainter;
class QQuickWindow;

namespace graph {

// Whether pixels stay pixels.
bool isWholeMove(const QTransform &transform);
// The same of all that is above a node.
bool isMovedOnly(const QSGNode *node);
// Whether nothing above a node makes it translucent.
bool isOpaque(const QSGNode *node);

// Paints into the window itself, on the software scene graph: as much of it as a frame needs, at the place
// and with the opacity that the scene gives it. Not owned by its parent.
class PaintingNode : public QSGRenderNode
{
public:
    // In coordinates of the item. With an opacity below 1, or transformed, the painter has that. It is clipped
    // to the region, which is one of the window.
    using Paint = std::function<void(QPainter *, const QRegion &region)>;

    PaintingNode(QQuickWindow *window, const Paint &paint);

    // What is painted has changed; it is within that rectangle, all of which goes to the display.
    void repaint(const QRect &rect);

    RenderingFlags flags() const override { return BoundedRectRendering; }
    QRectF rect() const override { return m_rect; }
    void render(const RenderState *state) override;

private:
    QQuickWindow *m_window;
    Paint m_paint;
    QRect m_rect;
};

} // namespace graph
