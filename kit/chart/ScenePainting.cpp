#include "kit/chart/ScenePainting.h"

#include "kit/chart/Backdrop.h"
#include "kit/chart/Canvas.h"
#include "kit/chart/ItemPainting.h"
#include "view/base/ShiftedItem.h"
#include "view/frame/GraphView.h"

#include <QPainter>
#include <QQuickPaintedItem>

#include <algorithm>

namespace graph {

namespace {

enum class Kind { Empty, View, Painted, Rectangle, Text, Foreign };

Kind kindOf(const QQuickItem *item)
{
    if (!(item->flags() & QQuickItem::ItemHasContents))
        return Kind::Empty;
    if (qobject_cast<const GraphView *>(item))
        return Kind::View;
    if (qobject_cast<const QQuickPaintedItem *>(item))
        return Kind::Painted;
    if (item->inherits("QQuickRectangle"))
        return Kind::Rectangle;
    return item->inherits("QQuickText") ? Kind::Text : Kind::Foreign;
}

bool isShown(const QQuickItem *item)
{
    return item->isVisible() && item->opacity() > 0.0;
}

QList<QQuickItem *> inPaintOrder(const QQuickItem *item)
{
    QList<QQuickItem *> children = item->childItems();
    std::stable_sort(children.begin(), children.end(),
                     [](const QQuickItem *a, const QQuickItem *b) { return a->z() < b->z(); });
    return children;
}

void collectForeign(QQuickItem *item, QVector<QQuickItem *> *found)
{
    if (!isShown(item))
        return;
    if (kindOf(item) == Kind::Foreign) {
        found->append(item); // its picture holds its children
        return;
    }
    const QList<QQuickItem *> children = item->childItems();
    for (QQuickItem *child : children)
        collectForeign(child, found);
}

double shiftOf(const QQuickPaintedItem *item, const QPainter &painter)
{
    const auto *shifted = dynamic_cast<const ShiftedItem *>(item);
    return shifted ? shifted->shiftOn(painter) : 0.0;
}

void paintPaintedItem(QQuickPaintedItem *item, QPainter *painter)
{
    if (item->fillColor().alpha() > 0)
        painter->fillRect(item->boundingRect(), item->fillColor());
    // What a framebuffer takes back must not show here.
    const double shift = shiftOf(item, *painter);
    painter->translate(-shift, -shift);
    item->paint(painter);
}

class Walk
{
public:
    Walk(const QHash<QQuickItem *, QImage> &pictures, Canvas *canvas)
        : m_pictures(pictures)
        , m_canvas(canvas)
    {
    }

    void paint(QQuickItem *item, Placement placement) const
    {
        if (!isShown(item))
            return;
        placement.opacity *= item->opacity();
        if (item->clip())
            placement.clip &= placement.transform.mapRect(item->clipRect());
        if (placement.clip.isEmpty())
            return;
        if (kindOf(item) == Kind::Foreign) {
            paintContent(item, placement);
            return;
        }
        const QList<QQuickItem *> children = inPaintOrder(item);
        const auto front = std::find_if(children.begin(), children.end(),
                                        [](const QQuickItem *child) { return child->z() >= 0.0; });
        for (auto child = children.begin(); child != front; ++child)
            paintChild(item, *child, placement);
        paintContent(item, placement);
        for (auto child = front; child != children.end(); ++child)
            paintChild(item, *child, placement);
    }

private:
    void paintChild(QQuickItem *parent, QQuickItem *child, Placement placement) const
    {
        placement.transform = child->itemTransform(parent, nullptr) * placement.transform;
        paint(child, placement);
    }

    void paintContent(QQuickItem *item, Placement placement) const
    {
        const bool smooth = item->antialiasing();
        switch (kindOf(item)) {
        case Kind::Empty:
            break;
        case Kind::View:
            if (const auto *source = dynamic_cast<const BackdropSource *>(item))
                m_canvas->draw(placement, false,
                               [source](QPainter *painter) { source->backdrop().paint(painter); });
            break;
        case Kind::Painted:
            // Their surface ends where they do.
            placement.clip &= placement.transform.mapRect(item->boundingRect());
            m_canvas->draw(placement, smooth, [item](QPainter *painter) {
                paintPaintedItem(static_cast<QQuickPaintedItem *>(item), painter);
            });
            break;
        case Kind::Rectangle:
            m_canvas->draw(placement, smooth, [item](QPainter *painter) { paintRectangle(*item, painter); });
            break;
        case Kind::Text:
            m_canvas->draw(placement, true, [item](QPainter *painter) { paintText(*item, painter); });
            break;
        case Kind::Foreign:
            const QImage picture = m_pictures.value(item);
            if (!picture.isNull())
                m_canvas->draw(placement, true, [item, &picture](QPainter *painter) {
                    painter->drawImage(item->boundingRect(), picture);
                });
            break;
        }
    }

    const QHash<QQuickItem *, QImage> &m_pictures;
    Canvas *m_canvas;
};

} // namespace

QVector<QQuickItem *> itemsToGrab(QQuickItem *root)
{
    QVector<QQuickItem *> found;
    collectForeign(root, &found);
    return found;
}

void paintScene(QQuickItem *root, const QHash<QQuickItem *, QImage> &pictures, Canvas *canvas)
{
    Placement placement;
    placement.clip = QRectF(0.0, 0.0, root->width(), root->height());
    Walk(pictures, canvas).paint(root, placement);
}

} // namespace graph
