#include "view/base/StrokeNode.h"

#include "view/base/InkImage.h"
#include "view/base/StrokeShape.h"

#include <QPainter>
#include <QQuickWindow>
#include <QSGRendererInterface>

#include <algorithm>
#include <atomic>
#include <utility>

namespace graph {

namespace {

constexpr int columnsOfImage = 64;

// Of the images of all lines at rest. What moves above lines beyond that has them painted again, as if they had changed.
constexpr qint64 mostImageBytes = 64 << 20;
std::atomic<qint64> imageBytes{0};

qint64 bytesOf(const QSize &size)
{
    constexpr int bytesOfPixel = 4;
    return qint64(size.width()) * size.height() * bytesOfPixel;
}

// The smallest rectangles around the strokes in each so many columns, where they are rectangles themselves: an image of all
// of the item, to be cut into pieces, takes more memory than the pieces.
std::vector<QRect> boundsInColumns(const RecordedStrokes &strokes)
{
    const int left = strokes.bounds.left();
    std::vector<QRect> bounds(std::size_t(strokes.bounds.width() / columnsOfImage) + 1);
    for (const RecordedStrokes::Part &part : strokes.parts) {
        for (const QRect &rectangle : part.rectangles) {
            const int last = (rectangle.right() - left) / columnsOfImage;
            for (int i = (rectangle.left() - left) / columnsOfImage; i <= last; ++i) {
                const QRect columns(left + i * columnsOfImage, rectangle.top(), columnsOfImage,
                                    rectangle.height());
                bounds[i] |= rectangle & columns;
            }
        }
    }
    return bounds;
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
    removeImages();
    removeAllChildNodes();
}

void StrokeNode::show(const RecordedStrokes &strokes, const QSize &size)
{
    if (m_size == size && strokes == m_strokes)
        return;
    m_strokes = strokes;
    m_size = size;
    m_layer = QImage();
    m_framesAtRest = -1; // the next frame shows what is new
    showPainting();
    m_painting.repaint(strokes.bounds);
}

void StrokeNode::preprocess()
{
    constexpr int framesBeforeImages = 2;
    if (m_framesAtRest < framesBeforeImages)
        ++m_framesAtRest;
    if (isMovedOnly(this)) {
        if (m_framesAtRest == framesBeforeImages)
            showImages();
        return;
    }
    // Transformed, an image would have other edges than a layer, and so would a part of the layer.
    showPainting();
    const QRect whole(QPoint(), m_size);
    if (m_painting.rect() != whole)
        m_painting.repaint(whole);
}

void StrokeNode::paint(QPainter *painter, const QRegion &region)
{
    if (isWholeMove(painter->transform()) && painter->opacity() >= 1.0) {
        m_strokes.paint(painter, region);
        return;
    }
    // As the layer of a painted item is shown, which is never smoothed here.
    if (m_layer.isNull())
        m_layer = m_strokes.image(QRect(QPoint(), m_size));
    painter->drawImage(QRectF(QPointF(), m_layer.size()), m_layer);
}

void StrokeNode::showPainting()
{
    if (m_painting.parent())
        return;
    removeImages();
    appendChildNode(&m_painting);
}

void StrokeNode::showImages()
{
    if (!m_painting.parent() || m_strokes.bounds.isEmpty() ||
        imageBytes + bytesOf(m_strokes.bounds.size()) > mostImageBytes)
        return;
    removeChildNode(&m_painting);
    if (m_strokes.areRectangles()) {
        for (const QRect &bounds : boundsInColumns(m_strokes)) {
            if (!bounds.isEmpty())
                showImage(m_strokes.image(withTransparentRow(bounds)), bounds.topLeft());
        }
        return;
    }
    const QRect bounds = m_strokes.bounds;
    const QImage whole = m_strokes.image(bounds);
    for (int left = 0; left < whole.width(); left += columnsOfImage) {
        const QRect part(left, 0, std::min(columnsOfImage, whole.width() - left), whole.height());
        const QRect ink = inkOf(whole, part);
        if (!ink.isEmpty())
            showImage(stampImage(whole, ink), bounds.topLeft() + ink.topLeft());
    }
}

void StrokeNode::showImage(const QImage &image, const QPoint &place)
{
    m_images.emplace_back(this, m_window);
    m_images.back().show(image, QRect(place, image.size()), QSGTexture::Nearest);
    m_imageBytes += bytesOf(image.size());
    imageBytes += bytesOf(image.size());
}

void StrokeNode::removeImages()
{
    for (ImageChild &image : m_images)
        image.remove();
    m_images.clear();
    imageBytes -= std::exchange(m_imageBytes, 0);
}

bool isSoftwareSceneGraph(const QQuickWindow &window)
{
    return window.rendererInterface()->graphicsApi() == QSGRendererInterface::Software;
}

bool isPaintedPlainly(const QQuickPaintedItem &item)
{
    return item.fillColor().alpha() == 0 && !item.opaquePainting() && item.textureSize().isEmpty() &&
           item.contentsScale() == 1.0 && item.contentsSize().isEmpty() && !item.antialiasing() &&
           item.window()->effectiveDevicePixelRatio() == 1.0;
}

QSGNode *strokedNode(ShiftedItem *item, QSGNode *&old)
{
    QQuickWindow *window = item->window();
    if (isPaintedPlainly(*item) && item->canDoWithoutLayer()) {
        const bool isSoftware = isSoftwareSceneGraph(*window);
        const QSize size(qRound(item->width()), qRound(item->height()));
        const RecordedStrokes strokes = recordedStrokes(
            size, [item](QPainter *painter) { item->paint(painter); },
            isSoftware ? SlopingLines::AsPixels : SlopingLines::AsPaths);
        if (strokes.isComplete && isSoftware) {
            auto *node = nodeOf<StrokeNode>(item, old);
            node->show(strokes, size);
            return node;
        }
        if (strokes.isComplete) {
            auto *node = nodeOf<StrokeShape>(item, old);
            node->show(strokes, size, item->smooth());
            return node;
        }
    }
    old = withoutStrokes(old);
    return nullptr;
}

QSGNode *withoutStrokes(QSGNode *old)
{
    if (!dynamic_cast<StrokeNode *>(old) && !dynamic_cast<StrokeShape *>(old))
        return old;
    delete old;
    return nullptr;
}

} // namespace graph
