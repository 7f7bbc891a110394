#include "view/base/StrokeNode.h"

#include <QPainter>
#include <QQuickWindow>
#include <QSGImageNode>
#include <QSGRendererInterface>
#include <QSGTexture>

namespace graph {

namespace {

QImage imageOf(const RecordedStrokes &strokes, const QRect &part)
{
    QImage image(part.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.translate(-part.topLeft());
    strokes.paint(&painter, image.rect());
    return image;
}

} // namespace

StrokeNode::StrokeNode(QQuickWindow *window)
    : m_window(window)
    , m_painting(window, [this](QPainter *painter, const QRegion &region) { paint(painter, region); })
{
    setFlag(UsePreprocess);
    appendChildNode(&m_painting);
}

StrokeNode::~StrokeNode()
{
    removeImage();
    removeAllChildNodes();
}

void StrokeNode::show(const RecordedStrokes &strokes, const QSize &size)
{
    if (m_painting.size() == size && strokes == m_strokes)
        return;
    m_strokes = strokes;
    m_layer = QImage();
    m_isNew = true;
    showPainting();
    m_painting.repaint(size);
}

void StrokeNode::preprocess()
{
    const bool isNew = m_isNew;
    m_isNew = false;
    // Transformed, an image would have other edges than a layer.
    if (!isMovedOnly(this))
        showPainting();
    else if (!isNew)
        showImage();
}

void StrokeNode::paint(QPainter *painter, const QRegion &region)
{
    if (isWholeMove(painter->transform()) && painter->opacity() >= 1.0) {
        m_strokes.paint(painter, region);
        return;
    }
    // As the layer of a painted item is shown, which is never smoothed here.
    if (m_layer.isNull())
        m_layer = imageOf(m_strokes, QRect(QPoint(), m_painting.size()));
    painter->drawImage(QRectF(QPointF(), m_layer.size()), m_layer);
}

void StrokeNode::showPainting()
{
    if (m_painting.parent())
        return;
    removeImage();
    appendChildNode(&m_painting);
}

void StrokeNode::showImage()
{
    if (m_image || m_strokes.bounds.isEmpty())
        return;
    removeChildNode(&m_painting);
    // With a transparent row at the end, as a stamp has it.
    const QRect part = m_strokes.bounds.adjusted(0, 0, 0, 1);
    m_texture.reset(
        m_window->createTextureFromImage(imageOf(m_strokes, part), QQuickWindow::TextureHasAlphaChannel));
    m_image = m_window->createImageNode();
    m_image->setTexture(m_texture.get());
    m_image->setSourceRect(QRectF(QPointF(), part.size()));
    m_image->setRect(part);
    m_image->setFiltering(QSGTexture::Nearest);
    appendChildNode(m_image);
}

void StrokeNode::removeImage()
{
    if (!m_image)
        return;
    removeChildNode(m_image);
    delete m_image;
    m_image = nullptr;
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
