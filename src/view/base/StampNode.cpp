#include "view/base/StampNode.h"

#include "raster/PixelFill.h"
#include "view/base/InkImage.h"
#include "view/base/StrokeNode.h"

#include <QPainter>
#include <QQuickWindow>
#include <QSGImageNode>
#include <QSGTexture>

#include <algorithm>
#include <iterator>
#include <utility>

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

StampNode::Placed StampNode::placed(const std::shared_ptr<Stamp> &stamp, const QPoint &origin) const
{
    const QRect whole = stamp->ink.translated(origin);
    const QRect ink = whole & QRect(QPoint(), m_size);
    return {stamp, ink, ink.topLeft() - whole.topLeft()};
}

std::shared_ptr<StampNode::Stamp> StampNode::stampOf(const PaintedMark &mark)
{
    for (const std::shared_ptr<Stamp> &stamp : m_stamps) {
        if (stamp->others.isEmpty() && stamp->mark == mark)
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

bool StampNode::isOf(const Stamp &stamp, const PaintedMark &mark, const QVector<PlacedMark> &others)
{
    const auto isSame = [](const PlacedMark &a, const PlacedMark &b) {
        return a.origin == b.origin && a.mark == b.mark;
    };
    return stamp.others.size() == others.size() && stamp.mark == mark &&
           std::equal(others.begin(), others.end(), stamp.others.begin(), isSame);
}

// A text with the part of lines that it covers. They move together, so that it is not made again for each pan.
std::shared_ptr<StampNode::Stamp> StampNode::stampOf(const PaintedMark &text,
                                                     const QVector<PlacedMark> &lines, const QRect &ink)
{
    for (const std::shared_ptr<Stamp> &stamp : m_stamps) {
        if (stamp->group.isNull() && isOf(*stamp, text, lines))
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
    stamp->others = lines;
    stamp->ink = ink;
    stamp->image = stampImage(image.copy(ink), QRect(QPoint(), ink.size()));
    m_stamps.push_back(stamp);
    return stamp;
}

// What cannot be shown by one image upon another, as the layer would have it, in pieces with little around them that is
// empty. A group begins at the origin of its first mark; item: from there.
std::vector<std::shared_ptr<StampNode::Stamp>> StampNode::piecesOf(const QVector<PlacedMark> &group,
                                                                   const QRect &item)
{
    const QVector<PlacedMark> others = group.mid(1);
    QRect bounds;
    for (const PlacedMark &placed : group)
        bounds |= QRect(placed.origin, placed.mark.size);
    // The letters at the edge of the layer are drawn by other means, too.
    if (std::any_of(group.begin(), group.end(),
                    [](const PlacedMark &placed) { return placed.mark.isText(); }))
        bounds &= item;
    std::vector<std::shared_ptr<Stamp>> pieces;
    std::copy_if(m_stamps.begin(), m_stamps.end(), std::back_inserter(pieces),
                 [&](const std::shared_ptr<Stamp> &stamp) {
                     return stamp->group == bounds && isOf(*stamp, group.first().mark, others);
                 });
    if (!pieces.empty())
        return pieces;
    const QImage picture = pictureOf(group, bounds);
    QVector<int> rows;
    for (const PlacedMark &placed : group) {
        const QRect ink =
            stampOf(placed.mark)->ink.translated(placed.origin - bounds.topLeft()) & picture.rect();
        rows << ink.top() << ink.bottom() + 1;
    }
    for (const QRect &part : inkParts(picture, rows)) {
        auto piece = std::make_shared<Stamp>();
        piece->mark = group.first().mark;
        piece->others = others;
        piece->group = bounds;
        piece->ink = part.translated(bounds.topLeft());
        piece->image = stampImage(picture.copy(part), QRect(QPoint(), part.size()));
        pieces.push_back(piece);
    }
    m_stamps.insert(m_stamps.end(), pieces.begin(), pieces.end());
    return pieces;
}

// Which of the candidates, marks before it, one covers, from its own place. Nothing where the pixels would be other
// ones: where it covers a translucent one, or a text.
StampNode::Covered StampNode::coveredLines(const PaintedFigure &figure, int index,
                                           const QVector<Placed> &single, const QVector<int> &candidates)
{
    const PlacedMark &added = figure.marks.at(index);
    const QRect &ink = single.at(index).ink;
    const bool isText = added.mark.isText();
    QVector<PlacedMark> covered;
    for (const int k : candidates) {
        const PlacedMark &below = figure.marks.at(k);
        if (!single.at(k).ink.intersects(ink))
            continue;
        if (below.mark.isText() || below.mark.isTranslucent())
            return {};
        if (isText)
            covered.append({below.mark, below.origin - added.origin});
    }
    return covered;
}

QVector<StampNode::Covered> StampNode::coveredLines(const PaintedFigure &figure,
                                                    const QVector<Placed> &single)
{
    // Lines may cover opaque ones: a grid of those is not to be compared each with each.
    QVector<Covered> covered;
    QVector<int> all;
    QVector<int> notToBeCovered;
    for (int i = 0; i < figure.marks.size(); ++i) {
        const PaintedMark &mark = figure.marks.at(i).mark;
        covered.append(coveredLines(figure, i, single, mark.isText() ? all : notToBeCovered));
        all.append(i);
        if (mark.isText() || mark.isTranslucent())
            notToBeCovered.append(i);
    }
    return covered;
}

// All that overlaps, directly or by way of others, with one.
QVector<int> StampNode::connectedTo(int index, const QVector<Placed> &single)
{
    QVector<bool> isTaken(single.size(), false);
    isTaken[index] = true;
    QVector<int> group{index};
    for (int k = 0; k < group.size(); ++k) {
        for (int i = 0; i < single.size(); ++i) {
            if (isTaken.at(i) || !single.at(i).ink.intersects(single.at(group.at(k)).ink))
                continue;
            isTaken[i] = true;
            group.append(i);
        }
    }
    std::sort(group.begin(), group.end());
    return group;
}

// A text over opaque lines becomes a stamp of its own, with the part of the lines in it.
QVector<StampNode::Placed> StampNode::arranged(const PaintedFigure &figure, const QVector<Placed> &single)
{
    const QVector<Covered> covered = coveredLines(figure, single);
    QVector<Placed> all;
    QVector<bool> isDone(single.size(), false);
    for (int i = 0; i < single.size(); ++i) {
        if (covered.at(i) || isDone.at(i))
            continue;
        QVector<PlacedMark> group;
        const QVector<int> members = connectedTo(i, single);
        const QPoint origin = figure.marks.at(members.first()).origin;
        for (const int k : members) {
            isDone[k] = true;
            group.append({figure.marks.at(k).mark, figure.marks.at(k).origin - origin});
        }
        for (const std::shared_ptr<Stamp> &piece : piecesOf(group, QRect(-origin, m_size)))
            all.append(placed(piece, origin));
    }
    for (int i = 0; i < single.size(); ++i) {
        if (isDone.at(i))
            continue;
        if (covered.at(i)->isEmpty()) {
            all.append(single.at(i));
            continue;
        }
        const PlacedMark &text = figure.marks.at(i);
        all.append(placed(stampOf(text.mark, *covered.at(i), single.at(i).stamp->ink), text.origin));
    }
    return all;
}

QVector<StampNode::Placed> StampNode::placedStamps(const PaintedFigure &figure)
{
    QVector<Placed> single;
    single.reserve(figure.marks.size());
    for (const PlacedMark &mark : figure.marks) {
        // The lines of a grid, and the marks of its ticks, follow each other.
        const bool isAsBefore = !single.isEmpty() && single.constLast().stamp->mark == mark.mark;
        single.append(placed(isAsBefore ? single.constLast().stamp : stampOf(mark.mark), mark.origin));
    }
    QVector<Placed> all = arranged(figure, single);
    for (const std::shared_ptr<Stamp> &stamp : m_stamps)
        stamp->isUsed = false;
    for (const QVector<Placed> &used : {single, all}) {
        for (const Placed &stamp : used)
            stamp.stamp->isUsed = true;
    }
    all.erase(std::remove_if(all.begin(), all.end(), [](const Placed &p) { return p.ink.isEmpty(); }),
              all.end());
    m_stamps.erase(std::remove_if(m_stamps.begin(), m_stamps.end(),
                                  [](const std::shared_ptr<Stamp> &stamp) { return !stamp->isUsed; }),
                   m_stamps.end());
    return all;
}

void StampNode::show(const PaintedFigure &figure, const QSize &size, bool smooth)
{
    m_size = size;
    const QVector<Placed> placed = placedStamps(figure);
    if (isSoftwareSceneGraph(*m_window))
        joinMoved(placed);
    m_placed = placed;
    m_figure = figure;
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

void StampNode::showPainted(const PaintedFigure &figure, const QSize &size)
{
    const bool isResized = std::exchange(m_size, size) != size;
    const QVector<Placed> placed = placedStamps(figure);
    if (placed == m_placed && !isResized)
        return;
    m_placed = placed;
    m_figure = figure;
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
        showImages({inOne()});
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
        place(m_nodes.at(i), placed.at(i), m_smooth);
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
            painter->drawImage(places.at(k - i).topLeft(), m_placed.at(k).stamp->image,
                               QRect(m_placed.at(k).from, places.at(k - i).size()));
    }
}

// Each write makes the renderer paint what is there again.
void StampNode::place(QSGImageNode *node, const Placed &placed, bool smooth)
{
    const QRectF rect(placed.ink);
    const QRectF source(placed.from, rect.size());
    const QSGTexture::Filtering filtering = smooth ? QSGTexture::Linear : QSGTexture::Nearest;
    if (node->texture() != placed.stamp->texture.get())
        node->setTexture(placed.stamp->texture.get());
    if (node->sourceRect() != source)
        node->setSourceRect(source);
    if (node->rect() != rect)
        node->setRect(rect);
    if (node->filtering() != filtering)
        node->setFiltering(filtering);
}

// As the layer would have it.
QImage StampNode::pictureOf(const QVector<PlacedMark> &marks, const QRect &bounds)
{
    QImage image = emptyImage(bounds.size());
    QPainter painter(&image);
    for (const PlacedMark &placed : marks)
        placed.mark.paint(&painter, placed.origin - bounds.topLeft());
    painter.end();
    return image;
}

StampNode::Placed StampNode::inOne() const
{
    auto stamp = std::make_shared<Stamp>();
    stamp->ink = QRect(QPoint(), m_size);
    stamp->image = stampImage(pictureOf(m_figure.marks, stamp->ink), stamp->ink);
    return placed(stamp, QPoint());
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
            // Where Qt paints in software, a layer is not smoothed, and images that may be are blended by slower means.
            if (isSoftware && change == FigureChange::AsAWhole)
                stamps->showPainted(figure, size);
            else
                stamps->show(figure, size, item->smooth() && !isSoftware);
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
