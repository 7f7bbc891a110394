#include "view/base/StrokeNode.h"

#include <QPainter>
#include <QQuickWindow>
#include <QSGImageNode>
#include <QSGRenderNode>
#include <QSGRendererInterface>
#include <QSGTexture>

#include <cmath>

namespace graph {

namespace {

bool isWholeMove(const QTransform &transform)
{
    return transform.type() <= QTransform::TxTranslate && transform.dx() == std::floor(transform.dx()) &&
           transform.dy() == std::floor(transform.dy());
}

QImage imageOf(const RecordedStrokes &strokes, const QRect &part)
{
    QImage image(part.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.translate(-part.topLeft());
    strokes.paint(&painter);
    return image;
}

} // namespace

class PaintingNode : public QSGRenderNode
{
public:
    explicit PaintingNode(QQuickWindow *window)
        : m_window(window)
    {
        setFlag(OwnedByParent, false);
    }

    bool isOf(const QSize &size) const { return size == m_size; }

    void show(const RecordedStrokes *strokes, const QSize &size)
    {
        m_strokes = strokes;
        m_size = size;
        m_layer = QImage();
        markDirty(DirtyGeometry | DirtyMaterial);
    }

    RenderingFlags flags() const override { return BoundedRectRendering; }
    QRectF rect() const override { return QRectF(QPointF(), m_size); }

    void render(const RenderState *state) override
    {
        auto *painter = static_cast<QPainter *>(
            m_window->rendererInterface()->getResource(m_window, QSGRendererInterface::PainterResource));
        // What of it has to be painted, in coordinates of the window.
        const QRegion *region = state->clipRegion();
        if (!painter || !m_strokes || !region || region->isEmpty())
            return;
        const QTransform transform = matrix()->toTransform();
        painter->setClipRegion(*region, Qt::ReplaceClip);
        painter->setTransform(transform);
        if (isWholeMove(transform) && inheritedOpacity() >= 1.0) {
            painter->setRenderHint(QPainter::Antialiasing, false);
            m_strokes->paint(painter);
            return;
        }
        // As the layer of a painted item is shown, which is never smoothed here.
        painter->setOpacity(inheritedOpacity());
        if (m_layer.isNull())
            m_layer = imageOf(*m_strokes, QRect(QPoint(), m_size));
        painter->drawImage(QRectF(QPointF(), m_size), m_layer);
    }

private:
    QQuickWindow *m_window;
    const RecordedStrokes *m_strokes = nullptr;
    QSize m_size;
    QImage m_layer;
};

StrokeNode::StrokeNode(QQuickWindow *window)
    : m_window(window)
    , m_painting(std::make_unique<PaintingNode>(window))
{
    setFlag(UsePreprocess);
    appendChildNode(m_painting.get());
}

StrokeNode::~StrokeNode()
{
    removeImage();
    removeAllChildNodes();
}

void StrokeNode::show(const RecordedStrokes &strokes, const QSize &size)
{
    if (m_painting->isOf(size) && strokes == m_strokes)
        return;
    m_strokes = strokes;
    m_isNew = true;
    showPainting();
    m_painting->show(&m_strokes, size);
}

void StrokeNode::preprocess()
{
    const bool isNew = m_isNew;
    m_isNew = false;
    if (!isMovedOnly())
        showPainting();
    else if (!isNew)
        showImage();
}

// Whether pixels of the item are pixels of the window. Transformed, an image would have other edges than a
// layer.
bool StrokeNode::isMovedOnly() const
{
    for (const QSGNode *node = parent(); node; node = node->parent()) {
        if (node->type() == TransformNodeType &&
            !isWholeMove(static_cast<const QSGTransformNode *>(node)->matrix().toTransform()))
            return false;
    }
    return true;
}

void StrokeNode::showPainting()
{
    if (m_painting->parent())
        return;
    removeImage();
    appendChildNode(m_painting.get());
}

void StrokeNode::showImage()
{
    if (m_image || m_strokes.bounds.isEmpty())
        return;
    // With a transparent row at the end, as a stamp has it.
    const QRect part = m_strokes.bounds.adjusted(0, 0, 0, 1);
    m_texture.reset(
        m_window->createTextureFromImage(imageOf(m_strokes, part), QQuickWindow::TextureHasAlphaChannel));
    m_image.reset(m_window->createImageNode());
    m_image->setFlag(OwnedByParent, false);
    m_image->setTexture(m_texture.get());
    m_image->setSourceRect(QRectF(QPointF(), part.size()));
    m_image->setRect(part);
    m_image->setFiltering(QSGTexture::Nearest);
    removeChildNode(m_painting.get());
    appendChildNode(m_image.get());
}

void StrokeNode::removeImage()
{
    if (!m_image)
        return;
    removeChildNode(m_image.get());
    m_image.reset();
    m_texture.reset();
}

bool isPaintedPlainly(const QQuickPaintedItem &item)
{
    return item.fillColor().alpha() == 0 && !item.opaquePainting() && item.textureSize().isEmpty() &&
           item.contentsScale() == 1.0 && item.contentsSize().isEmpty() && !item.antialiasing() &&
           item.window()->effectiveDevicePixelRatio() == 1.0;
}

QSGNode *strokedNode(QQuickPaintedItem *item, QSGNode *&old)
{
    QQuickWindow *window = item->window();
    if (isPaintedPlainly(*item) &&
        window->rendererInterface()->graphicsApi() == QSGRendererInterface::Software) {
        const QSize size(qRound(item->width()), qRound(item->height()));
        const RecordedStrokes strokes =
            recordedStrokes(size, [item](QPainter *painter) { item->paint(painter); });
        if (strokes.isComplete) {
            auto *node = dynamic_cast<StrokeNode *>(old);
            if (!node) {
                delete old;
                node = new StrokeNode(window);
            }
            node->show(strokes, size);
            return node;
        }
    }
    old = withoutStrokes(old);
    return nullptr;
}

QSGNode *withoutStrokes(QSGNode *old)
{
    if (!dynamic_cast<StrokeNode *>(old))
        return old;
    delete old;
    return nullptr;
}

} // namespace graph
