#pragma once

#include "view/base/PaintedFigure.h"
#include "view/base/PaintingNode.h"
#include "view/base/ShiftedItem.h"

#include <QImage>
#include <QSGNode>

#include <memory>
#include <optional>
#include <vector>

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
    explicit StampNode(QQuickWindow *window);
    ~StampNode() override;

    void show(const PaintedFigure &figure, const QSize &size, bool smooth);
    // The same on the software scene graph, for what is often all new: in frames in which it is, all of it is
    // painted into the window. A rectangle takes fewer instructions than an image of
    // one, and one large node fewer than many.
    void showPainted(const PaintedFigure &figure, const QSize &size);

    PaintedTexts &texts() { return m_texts; }

    // Comes before each frame of what is painted.
    void preprocess() override;

private:
    struct Stamp
    {
        PaintedMark mark;
        // The lines that the mark, a text, covers, or the rest of the group that begins with the mark. Their places are from
        // the mark's origin, and so is the ink's.
        QVector<PlacedMark> others;
        QRect ink;
        QRect group; // that it is a piece of; null where it is none
        QImage image;
        bool isFilled = false; // with one opaque colour
        std::shared_ptr<QSGTexture> texture;
        bool isUsed = false;
    };
    struct Placed
    {
        std::shared_ptr<Stamp> stamp;
        QRect ink;   // what of it is in the item
        QPoint from; // where that begins in the image

        bool operator==(const Placed &other) const
        {
            return stamp == other.stamp && ink == other.ink && from == other.from;
        }
    };

    using Covered = std::optional<QVector<PlacedMark>>;

    static bool isOf(const Stamp &stamp, const PaintedMark &mark, const QVector<PlacedMark> &others);
    Placed placed(const std::shared_ptr<Stamp> &stamp, const QPoint &origin) const;
    std::shared_ptr<Stamp> stampOf(const PaintedMark &mark);
    std::shared_ptr<Stamp> stampOf(const PaintedMark &text, const QVector<PlacedMark> &lines,
                                   const QRect &ink);
    std::vector<std::shared_ptr<Stamp>> piecesOf(const QVector<PlacedMark> &group, const QRect &item);
    static Covered coveredLines(const PaintedFigure &figure, int index, const QVector<Placed> &single,
                                const QVector<int> &candidates);
    static QVector<Covered> coveredLines(const PaintedFigure &figure, const QVector<Placed> &single);
    static QVector<int> connectedTo(int index, const QVector<Placed> &single);
    QVector<Placed> arranged(const PaintedFigure &figure, const QVector<Placed> &single);
    QVector<Placed> placedStamps(const PaintedFigure &figure);
    static QImage pictureOf(const QVector<PlacedMark> &marks, const QRect &bounds);
    Placed inOne() const;
    bool needsOneImage(bool isMoved);
    void showImages(const QVector<Placed> &placed);
    void joinMoved(const QVector<Placed> &placed);
    void showPainting();
    static bool isFilledWith(const Stamp &stamp, QRgb color);
    void paint(QPainter *painter, const QRegion &region) const;
    static void place(QSGImageNode *node, const Placed &placed, bool smooth);

    QQuickWindow *m_window;
    PaintedTexts m_texts;
    std::vector<std::shared_ptr<Stamp>> m_stamps;
    QVector<Placed> m_placed;
    QVector<QSGImageNode *> m_nodes;
    QVector<std::shared_ptr<QSGTexture>> m_shown; // in the nodes
    PaintingNode m_painting;
    PaintingNode m_joint; // paints nothing
    PaintedFigure m_figure;
    QSize m_size;
    bool m_smooth = false;
    bool m_isNew = false;   // since the last frame, and painted
    bool m_isWhole = false; // in one image, as a layer would be shown
};

// What of a figure a change leaves as it was.
enum class FigureChange {
    InPart,  // most of it, as when one of its lines moves
    AsAWhole // hardly anything, as when a grid does
};

// The node of an item that paints nothing but a few lines and texts, for its updatePaintNode: of stamps, or
// null where it has to be a layer, old then being what goes on as the layer's node.
QSGNode *stampedNode(ShiftedItem *item, QSGNode *&old, FigureChange change);

} // namespace graph
