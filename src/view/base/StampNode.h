#pragma once

#include "view/base/PaintedFigure.h"

#include <QImage>
#include <QQuickPaintedItem>
#include <QSGNode>

#include <memory>
#include <vector>

class QQuickWindow;
class QSGImageNode;
class QSGTexture;

namespace graph {

// Shows lines and texts as small images, each made once and moved afterwards. Painted into a layer of the
// item's size they would have all of it cleared, painted, blended and, on a graphics processor, uploaded with
// each change. The pixels are the layer's. A transform node, because the software renderer of Qt forgets
// where a plain node is when that gets another child.
class StampNode : public QSGTransformNode
{
public:
    ~StampNode() override;

    void show(QQuickWindow *window, const PaintedFigure &figure, bool smooth);

private:
    struct Stamp
    {
        PaintedMark mark;
        QVector<PlacedMark> lines; // that the mark, a text, covers
        QRect ink;                 // like the lines' places from the mark's origin
        QImage image;
        std::shared_ptr<QSGTexture> texture;
        bool isUsed = false;
    };
    struct Placed
    {
        std::shared_ptr<Stamp> stamp;
        QRect ink;
    };

    std::shared_ptr<Stamp> stampOf(const PaintedMark &mark);
    std::shared_ptr<Stamp> stampOf(const PaintedMark &text, const QVector<PlacedMark> &lines,
                                   const QRect &ink);
    // False where the pixels would be other ones: where a translucent mark, or a text, covers another.
    bool arrange(const PaintedFigure &figure, QVector<Placed> &placed);
    static Placed inOne(const PaintedFigure &figure);
    static void place(QSGImageNode *node, const Stamp &stamp, const QPoint &corner, bool smooth);

    std::vector<std::shared_ptr<Stamp>> m_stamps;
    QVector<QSGImageNode *> m_nodes;
    QVector<std::shared_ptr<QSGTexture>> m_shown; // in the nodes
};

// The node of an item that paints nothing but a few lines and texts, for its updatePaintNode: of stamps, or
// null where it has to be a layer, old then being what goes on as the layer's node.
QSGNode *stampedNode(QQuickPaintedItem *item, QSGNode *&old);

} // namespace graph
