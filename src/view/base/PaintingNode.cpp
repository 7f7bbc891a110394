#include "view/base/PaintingNode.h"

#include <QPainter>
#include <QQuickWindow>
#include <QSGRendererInterface>

#include <cmath>

namespace graph {

bool isWholeMove(const QTransform &transform)
{
    return transform.type() <= QTransform::TxTranslate && transform.dx() == std::floor(transform.dx()) &&
           transform.dy() == std::floor(transform.dy());
}

bool isMovedOnly(const QSGNode *node)
{
    for (node = node->parent(); node; node = node->parent()) {
        if (node->type() == QSGNode::TransformNodeType &&
            !isWholeMove(static_cast<const QSGTransformNode *>(node)->matrix().toTransform()))
            return false;
    }
    return true;
}

bool isOpaque(const QSGNode *node)
{
    for (node = node->parent(); node; node = node->parent()) {
        if (node->type() == QSGNode::OpacityNodeType &&
            static_cast<const QSGOpacityNode *>(node)->opacity() < 1.0)
            return false;
    }
    return true;
}

PaintingNode::PaintingNode(QQuickWindow *window, const Paint &paint)
    : m_window(window)
    , m_paint(paint)
{
    setFlag(OwnedByParent, false);
}

void PaintingNode::repaint(const QRect &rect)
{
    m_rect = rect;
    markDirty(DirtyGeometry | DirtyMaterial);
}

void PaintingNode::render(const RenderState *state)
{
    auto *painter = static_cast<QPainter *>(
        m_window->rendererInterface()->getResource(m_window, QSGRendererInterface::PainterResource));
    // What of it has to be painted, in coordinates of the window.
    const QRegion *region = state->clipRegion();
    if (!painter || !region || region->isEmpty())
        return;
    const QTransform transform = matrix()->toTransform();
    painter->setClipRegion(*region, Qt::ReplaceClip);
    painter->setTransform(transform);
    painter->setOpacity(inheritedOpacity());
    painter->setRenderHint(QPainter::Antialiasing, !isWholeMove(transform));
    m_paint(painter, *region);
}

} // namespace graph
