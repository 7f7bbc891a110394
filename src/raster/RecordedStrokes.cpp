#include "raster/RecordedStrokes.h"

#include "raster/LineFill.h"
#include "raster/LinePoints.h"
#include "raster/OutlineFill.h"
#include "raster/PixelFill.h"
#include "raster/RecordingEngine.h"
#include "raster/Strokes.h"

#include <QImage>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace graph {

namespace {

// In pixels. What reaches farther is clipped by the engine before it is filled, in a way that depends on the
// picture.
constexpr double nearPicture = 1 << 14;

class StrokeRecorder : public RecordingEngine
{
public:
    StrokeRecorder(const QSize &size, SlopingLines lines)
        : RecordingEngine(size)
        , m_takesPaths(lines == SlopingLines::AsPaths)
    {
    }

    RecordedStrokes strokes;

    Type type() const override { return m_takesPaths ? pathRecorder : strokeRecorder; }

    void updateState(const QPaintEngineState &now) override
    {
        RecordingEngine::updateState(now);
        const DirtyFlags changed = now.state();
        if (changed & DirtyBrush)
            m_brush = now.brush();
        if (changed & DirtyHints && now.renderHints() & QPainter::Antialiasing)
            refuse();
    }

    using RecordingEngine::drawRects;
    void drawRects(const QRect *rects, int count) override
    {
        if (pen().style() != Qt::NoPen)
            refuse();
        if (!isRecordable(m_brush))
            return;
        RecordedStrokes::Part part;
        part.brush = m_brush;
        part.rectangles.reserve(count);
        const int offsetX = int(transform().dx());
        const int offsetY = int(transform().dy());
        QPoint first(picture().width(), picture().height());
        QPoint last(-1, -1);
        for (int i = 0; i < count; ++i) {
            const int left = std::max(rects[i].left() + offsetX, 0);
            const int top = std::max(rects[i].top() + offsetY, 0);
            const int right = std::min(rects[i].right() + offsetX, picture().right());
            const int bottom = std::min(rects[i].bottom() + offsetY, picture().bottom());
            if (left > right || top > bottom)
                continue;
            first = QPoint(std::min(first.x(), left), std::min(first.y(), top));
            last = QPoint(std::max(last.x(), right), std::max(last.y(), bottom));
            part.rectangles.append(QRect(QPoint(left, top), QPoint(right, bottom)));
        }
        append(std::move(part), QRect(first, last));
    }

    void drawPath(const QPainterPath &path) override
    {
        if (path.isEmpty())
            return;
        const bool isLine = pen().style() != Qt::NoPen;
        if (!(isLine ? isRecordableLine(path) : isRecordableArea())) {
            refuse();
            return;
        }
        RecordedStrokes::Part part;
        part.path = path.translated(transform().dx(), transform().dy());
        part.pen = pen();
        part.brush = m_brush;
        const double reach = isLine ? pen().widthF() + 1.0 : 1.0;
        const QRectF bounds = part.path.controlPointRect().adjusted(-reach, -reach, reach, reach);
        if (isNearPicture(bounds))
            append(std::move(part), bounds.toAlignedRect() & picture());
        else
            refuse();
    }

    // On what is below, a translucent picture over something else is not the same as both in one layer; under opaque
    // shapes it is.
    void drawImage(const QRectF &target, const QImage &image, const QRectF &source,
                   Qt::ImageConversionFlags) override
    {
        const QPoint corner = target.toRect().topLeft();
        if (m_takesPaths || !strokes.parts.empty() || source != QRectF(image.rect()) ||
            target != QRectF(corner, image.size()) || !isOnWholePixels()) {
            refuse();
            return;
        }
        const QPoint moved = corner + QPoint(int(transform().dx()), int(transform().dy()));
        RecordedStrokes::Part part;
        part.picture = image;
        part.place = QRect(moved, image.size()) & picture();
        part.seen = part.place.topLeft() - moved;
        const QRect place = part.place;
        append(std::move(part), place);
    }

private:
    static bool isNearPicture(const QRectF &bounds)
    {
        return bounds.left() > -nearPicture && bounds.right() < nearPicture && bounds.top() > -nearPicture &&
               bounds.bottom() < nearPicture;
    }

    // Where translucent shapes overlap, one after the other on what is below is not the same as all of them
    // in one layer.
    bool isRecordable(const QBrush &brush)
    {
        if (brush.style() != Qt::SolidPattern || !brush.isOpaque() || !isOnWholePixels())
            refuse();
        return isComplete();
    }

    bool isOnWholePixels() const
    {
        const auto isWhole = [](double offset) { return offset == std::floor(offset); };
        return transform().type() <= QTransform::TxTranslate && isWhole(transform().dx()) &&
               isWhole(transform().dy());
    }

    bool isRecordableLine(const QPainterPath &path)
    {
        return m_brush.style() == Qt::NoBrush && isSteadyLine(path) && isRecordable(pen().brush());
    }

    bool isRecordableArea() { return !m_takesPaths && isRecordable(m_brush); }

    // The raster engine cuts thin lines and single ones off at the picture's edge before it finds their pixels.
    bool isSteadyLine(const QPainterPath &path) const
    {
        return pen().style() == Qt::SolidLine && pen().width() >= 2 && !pen().isCosmetic() &&
               pen().capStyle() == Qt::FlatCap && pen().joinStyle() == Qt::BevelJoin &&
               (m_takesPaths || (path.elementCount() > 2 && !path.elementAt(2).isMoveTo()));
    }

    void append(RecordedStrokes::Part &&part, const QRect &bounds)
    {
        if (bounds.isEmpty())
            return;
        strokes.bounds |= bounds;
        strokes.parts.push_back(std::move(part));
    }

    bool m_takesPaths;
    QBrush m_brush;
};

void paintRectangles(QPainter *painter, const QRegion &region, const QVector<QRect> &rectangles,
                     const QBrush &brush)
{
    if (fillPixels(painter, region, rectangles, brush.color()))
        return;
    painter->setPen(Qt::NoPen);
    painter->setBrush(brush);
    painter->drawRects(rectangles);
}

// bounds: of the pixels that it has.
void paintPath(QPainter *painter, const QRegion &region, const RecordedStrokes::Part &part,
               const QRect &bounds)
{
    const LinePoints points(part.path);
    if (haveKnownPixels(points)) {
        // The engine's own line has other pixels where a painter is clipped or mirrored, as for an item's layer.
        if (!paintLine(painter, region, points, part.pen))
            paintRectangles(painter, region, strokedRectangles(points, part.pen.width(), QPoint(), bounds),
                            part.pen.brush());
        return;
    }
    painter->setPen(part.pen);
    drawLinePath(painter, part.path);
}

} // namespace

QColor RecordedStrokes::Part::color() const
{
    return pen.style() != Qt::NoPen ? pen.color() : brush.color();
}

bool RecordedStrokes::Part::operator==(const Part &other) const
{
    return picture.cacheKey() == other.picture.cacheKey() && place == other.place && seen == other.seen &&
           rectangles == other.rectangles && path == other.path && pen == other.pen && brush == other.brush;
}

bool RecordedStrokes::areRectangles() const
{
    return std::all_of(parts.begin(), parts.end(),
                       [](const Part &part) { return !part.rectangles.isEmpty(); });
}

void RecordedStrokes::paint(QPainter *painter, const QRegion &region) const
{
    for (const Part &part : parts) {
        if (!part.picture.isNull())
            painter->drawImage(part.place.topLeft(), part.picture, QRect(part.seen, part.place.size()));
        else if (!part.rectangles.isEmpty())
            paintRectangles(painter, region, part.rectangles, part.brush);
        else if (part.pen.style() == Qt::NoPen)
            painter->fillPath(part.path, part.brush);
        else
            paintPath(painter, region, part, bounds);
    }
}

QImage RecordedStrokes::image(const QRect &part) const
{
    QImage image(part.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.translate(-part.topLeft());
    paint(&painter, image.rect());
    return image;
}

RecordedStrokes recordedStrokes(const QSize &size, const std::function<void(QPainter *)> &paint,
                                SlopingLines lines)
{
    StrokeRecorder recorder(size, lines);
    QPainter painter(&recorder);
    paint(&painter);
    painter.end();
    recorder.strokes.isComplete = recorder.isComplete();
    return recorder.strokes;
}

} // namespace graph
