#include "view/base/StampNode.h"

#include "raster/PixelFill.h"
#include "view/base/InkImage.h"
#include "view/base/StrokeNode.h"

#include <QPainter>
#include <QQuickWindow>
#include <QSGImageNode>
#include <QSGTexture>

#include <algorithm>

namespace graph {

namespace {

constexpr QQuickWindow::CreateTextureOptions textureOptions(QQuickWindow::TextureHasAlphaChannel |
                                                            QQuickWindow::TextureCanUseAtlas);

QImage emptyImage(const QSize &size)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    return image;
}

bool isFilledWithOne(const QImage &image, const QRect &part)
{
    if (part.isEmpty() || qAlpha(image.pixel(part.topLeft())) < 255)
        return false;
    const QRgb color = image.pixel(part.topLeft());
    for (int y = part.top(); y <= part.bottom(); ++y) {
        const QRgb *row = reinterpret_cast<const QRgb *>(image.constScanLine(y));
        if (!std::all_of(row + part.left(), row + part.right() + 1,
                         [color](QRgb pixel) { return pixel == color; }))
            return false;
    }
    return true;
}

} // namespace

StampNode::StampNode(QQuickWindow *window)
    : m_window(window)
    , m_painting(window, [this](QPainter *painter, const QRegion &region) { paint(painter, region); })
    , m_joint(window, [](QPainter *, const QRegion &) {})
{
    setFlag(UsePreprocess);
}

StampNode::~StampNode()
{
    for (PaintingNode *node : {&m_painting, &m_joint}) {
        if (node->parent())
            removeChildNode(node);
    }
    // Before their textures.
    while (QSGNode *node = firstChild()) {
        removeChildNode(node);
        delete node;
    }
}

std::shared_ptr<StampNode::Stamp> StampNode::stampOf(const PaintedMark &mark)
{
    for (const std::shared_ptr<Stamp> &stamp : m_stamps) {
        if (stamp->lines.isEmpty() && stamp->mark == mark)
            return stamp;
    }
    QImage image = emptyImage(mark.size);
    QPainter painter(&image);
    mark.paint(&painter, QPoint());
    painter.end();
    auto stamp = std::make_shared<Stamp>();
    stamp->mark = mark;
    stamp->ink = inkOf(image, image.rect());
    stamp->isFilled = isFilledWithOne(image, stamp->ink);
    stamp->image = stampImage(image, stamp->ink);
    m_stamps.push_back(stamp);
    return stamp;
}

// A text with the part of lines that it covers. They move together, so that it is not made again for each pan.
std::shared_ptr<StampNode::Stamp> StampNode::stampOf(const PaintedMark &text,
                                                     const QVector<PlacedMark> &lines, const QRect &ink)
{
    const auto isSame = [](const PlacedMark &a, const PlacedMark &b) {
        return a.origin == b.origin && a.mark == b.mark;
    };
    for (const std::shared_ptr<Stamp> &stamp : m_stamps) {
        if (stamp->lines.size() == lines.size() && stamp->mark == text &&
            std::equal(lines.begin(), lines.end(), stamp->lines.begin(), isSame))
            return stamp;
    }
    // As large as for a stamp without lines: letters at the edge of an image are drawn by other means.
    QImage image = emptyImage(text.size);
    QPainter painter(&image);
    for (const PlacedMark &line : lines) {
        const std::shared_ptr<Stamp> below = stampOf(line.mark);
        painter.drawImage(line.origin + below->ink.topLeft(), below->image);
    }
    text.paint(&painter, QPoint());
    painter.end();
    auto stamp = std::make_shared<Stamp>();
    stamp->mark = text;
    stamp->lines = lines;
    stamp->ink = ink;
    stamp->image = stampImage(image.copy(ink), QRect(QPoint(), ink.size()));
    m_stamps.push_back(stamp);
    return stamp;
}

std::optional<QVector<PlacedMark>> StampNode::coveredLines(const PaintedFigure &figure, int index,
                                                           const QVector<Placed> &placed, const QRect &ink,
                                                           const QVector<int> &candidates)
{
    const PlacedMark &added = figure.marks.at(index);
    const bool isText = added.mark.isText();
    QVector<PlacedMark> covered;
    for (const int k : candidates) {
        const PlacedMark &below = figure.marks.at(k);
        if (ink.isEmpty() || !placed.at(k).ink.intersects(ink))
            continue;
        if (below.mark.isText() || below.mark.isTranslucent() || (added.mark.isTranslucent() && !isText))
            return {};
        if (isText)
            covered.append({below.mark, below.origin - added.origin});
    }
    return covered;
}

// A text over opaque lines becomes a stamp of its own, with the part of the lines in it.
bool StampNode::arrange(const PaintedFigure &figure, QVector<Placed> &placed)
{
    // An opaque line may cover others: a grid of them is not to be compared each with each.
    const auto isOpaqueLine = [](const PaintedMark &mark) { return !mark.isText() && !mark.isTranslucent(); };
    QVector<int> all;
    QVector<int> notToBeCovered;
    for (int i = 0; i < figure.marks.size(); ++i) {
        const PlacedMark &added = figure.marks.at(i);
        std::shared_ptr<Stamp> stamp = stampOf(added.mark);
        const QRect ink = stamp->ink.translated(added.origin);
        const auto covered =
            coveredLines(figure, i, placed, ink, isOpaqueLine(added.mark) ? notToBeCovered : all);
        if (!covered)
            return false;
        stamp->isUsed = true;
        if (!covered->isEmpty()) {
            stamp = stampOf(added.mark, *covered, stamp->ink);
            stamp->isUsed = true;
        }
        placed.append({stamp, ink});
        all.append(i);
        if (!isOpaqueLine(added.mark))
            notToBeCovered.append(i);
    }
    return true;
}

QVector<StampNode::Placed> StampNode::placedStamps(const PaintedFigure &figure)
{
    for (const std::shared_ptr<Stamp> &stamp : m_stamps)
        stamp->isUsed = false;
    QVector<Placed> placed;
    if (!arrange(figure, placed))
        placed = {inOne(figure, {})};
    placed.erase(
        std::remove_if(placed.begin(), placed.end(), [](const Placed &p) { return p.ink.isEmpty(); }),
        placed.end());
    m_stamps.erase(std::remove_if(m_stamps.begin(), m_stamps.end(),
                                  [](const std::shared_ptr<Stamp> &stamp) { return !stamp->isUsed; }),
                   m_stamps.end());
    return placed;
}

void StampNode::show(const PaintedFigure &figure, const QSize &size, bool smooth)
{
    const QVector<Placed> placed = placedStamps(figure);
    if (isSoftwareSceneGraph(*m_window))
        joinMoved(placed);
    m_placed = placed;
    m_figure = figure;
    m_size = size;
    m_smooth = smooth;
    m_isWhole = false;
    showImages(placed);
}

// Stamps that move a little leave two thin places to paint, each row of which costs as much as that of a wider one:
// they become one place.
void StampNode::joinMoved(const QVector<Placed> &placed)
{
    constexpr int widest = 32;
    QRect moved;
    if (placed.size() == m_placed.size()) {
        for (int i = 0; i < placed.size(); ++i) {
            if (placed.at(i).stamp == m_placed.at(i).stamp && placed.at(i).ink != m_placed.at(i).ink)
                moved |= placed.at(i).ink | m_placed.at(i).ink;
        }
    }
    if (moved.isEmpty() || std::min(moved.width(), moved.height()) > widest) {
        if (m_joint.parent())
            removeChildNode(&m_joint);
        return;
    }
    if (!m_joint.parent())
        appendChildNode(&m_joint);
    m_joint.repaint(moved);
}

void StampNode::showPainted(const PaintedFigure &figure, const QSize &size, bool smooth)
{
    const QVector<Placed> placed = placedStamps(figure);
    if (placed == m_placed && size == m_size && smooth == m_smooth)
        return;
    m_placed = placed;
    m_figure = figure;
    m_size = size;
    m_smooth = smooth;
    m_isNew = true;
    m_isWhole = false;
    showPainting();
    QRect bounds;
    for (const Placed &stamp : placed)
        bounds |= stamp.ink;
    m_painting.repaint(bounds);
}

// What covers something else would let it through where the item is translucent; and a graphics processor smooths the
// edges of images that are scaled.
bool StampNode::needsOneImage(bool isMoved)
{
    return !isOpaque(this) || (!isMoved && !isSoftwareSceneGraph(*m_window));
}

void StampNode::preprocess()
{
    const bool isMoved = isMovedOnly(this);
    const bool isPainted = m_painting.parent() && m_isNew && isMoved;
    m_isNew = false;
    const bool isWhole = needsOneImage(isMoved);
    if (isWhole && !m_isWhole)
        showImages({inOne(m_figure, QRect(QPoint(), m_size))});
    else if (!isWhole && (m_isWhole || (m_painting.parent() && !isPainted)))
        showImages(m_placed);
    m_isWhole = isWhole;
}

void StampNode::showImages(const QVector<Placed> &placed)
{
    if (m_painting.parent())
        removeChildNode(&m_painting);
    while (m_nodes.size() > placed.size()) {
        QSGImageNode *node = m_nodes.takeLast();
        removeChildNode(node);
        delete node;
    }
    QVector<std::shared_ptr<QSGTexture>> shown;
    for (int i = 0; i < placed.size(); ++i) {
        Stamp &stamp = *placed.at(i).stamp;
        if (!stamp.texture)
            stamp.texture.reset(m_window->createTextureFromImage(stamp.image, textureOptions));
        const bool isNew = i == m_nodes.size();
        if (isNew)
            m_nodes.append(m_window->createImageNode());
        place(m_nodes.at(i), stamp, placed.at(i).ink.topLeft(), m_smooth);
        if (isNew)
            appendChildNode(m_nodes.at(i));
        shown.append(stamp.texture);
    }
    m_shown = shown;
}

void StampNode::showPainting()
{
    for (QSGImageNode *node : qAsConst(m_nodes)) {
        removeChildNode(node);
        delete node;
    }
    m_nodes.clear();
    m_shown.clear();
    if (!m_painting.parent())
        appendChildNode(&m_painting);
}

bool StampNode::isFilledWith(const Stamp &stamp, QRgb color)
{
    return color != 0 && stamp.isFilled && stamp.image.pixel(0, 0) == color;
}

void StampNode::paint(QPainter *painter, const QRegion &region) const
{
    // Neighbours of one colour, such as the lines of a grid, are filled in one go.
    const bool fills = painter->opacity() >= 1.0;
    for (int i = 0, end = 0; i < m_placed.size(); i = end) {
        const Stamp &stamp = *m_placed.at(i).stamp;
        const QRgb color = stamp.isFilled && fills ? stamp.image.pixel(0, 0) : 0;
        QVector<QRect> places;
        for (end = i; end < m_placed.size() && (end == i || isFilledWith(*m_placed.at(end).stamp, color));
             ++end)
            places.append(m_placed.at(end).ink);
        if (color != 0 && fillPixels(painter, region, places, QColor::fromRgb(color)))
            continue;
        for (int k = i; k < end; ++k)
            painter->drawImage(places.at(k - i).topLeft(), m_placed.at(k).stamp->image);
    }
}

// Each write makes the renderer paint what is there again.
void StampNode::place(QSGImageNode *node, const Stamp &stamp, const QPoint &corner, bool smooth)
{
    const QRectF whole(QPointF(), stamp.image.size());
    const QRectF rect = whole.translated(corner);
    const QSGTexture::Filtering filtering = smooth ? QSGTexture::Linear : QSGTexture::Nearest;
    if (node->texture() != stamp.texture.get())
        node->setTexture(stamp.texture.get());
    if (node->sourceRect() != whole)
        node->setSourceRect(whole);
    if (node->rect() != rect)
        node->setRect(rect);
    if (node->filtering() != filtering)
        node->setFiltering(filtering);
}

// All of it as the layer would have it, in one image no larger than that and the part take.
StampNode::Placed StampNode::inOne(const PaintedFigure &figure, const QRect &part)
{
    QRect bounds = part;
    for (const PlacedMark &placed : figure.marks)
        bounds |= QRect(placed.origin, placed.mark.size);
    QImage image = emptyImage(bounds.size());
    QPainter painter(&image);
    for (const PlacedMark &placed : figure.marks)
        placed.mark.paint(&painter, placed.origin - bounds.topLeft());
    painter.end();
    auto stamp = std::make_shared<Stamp>();
    stamp->image = stampImage(image, image.rect());
    return {stamp, bounds};
}

QSGNode *stampedNode(ShiftedItem *item, QSGNode *&old, FigureChange change)
{
    QQuickWindow *window = item->window();
    auto *stamps = dynamic_cast<StampNode *>(old);
    if (isPaintedPlainly(*item) && item->canDoWithoutLayer()) {
        const bool isSoftware = isSoftwareSceneGraph(*window);
        const QSize size(qRound(item->width()), qRound(item->height()));
        PaintedTexts noTexts;
        // A graphics processor draws lines of odd widths in a framebuffer one pixel farther to the left and up.
        const double offset = isSoftware ? 0.0 : -item->framebufferShift();
        const PaintedFigure figure = recordedFigure(size, stamps ? stamps->texts() : noTexts, offset,
                                                    [item](QPainter *painter) { item->paint(painter); });
        if (figure.isComplete) {
            stamps = nodeOf<StampNode>(item, old);
            if (isSoftware && change == FigureChange::AsAWhole)
                stamps->showPainted(figure, size, item->smooth());
            else
                stamps->show(figure, size, item->smooth());
            return stamps;
        }
    }
    if (stamps) {
        delete stamps;
        old = nullptr;
    }
    return nullptr;
}

} // namespace graph
