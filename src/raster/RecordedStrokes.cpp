#include "raster/RecordedStrokes.h"

#include "raster/PixelFill.h"
#include "raster/Strokes.h"

#include <QImage>
#include <QPaintEngine>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace graph {

namespace {

// In pixels. What reaches farther is clipped by the engine before it is filled, in a way that depends on the
// picture.
constexpr double nearPicture = 1 << 14;

// The painter's engine and device while strokes are taken down.
class StrokeRecorder : public QPaintEngine, public QPaintDevice
{
public:
    StrokeRecorder(const QSize &size, SlopingLines lines)
        : QPaintEngine(AllFeatures)
        , m_takesPaths(lines == SlopingLines::AsPaths)
        , m_picture(QPoint(0, 0), size)
    {
    }

    RecordedStrokes strokes;

    bool begin(QPaintDevice *) override { return true; }
    bool end() override { return true; }
    Type type() const override { return m_takesPaths ? pathRecorder : strokeRecorder; }
    QPaintEngine *paintEngine() const override { return const_cast<StrokeRecorder *>(this); }

    void updateState(const QPaintEngineState &now) override
    {
        const DirtyFlags changed = now.state();
        if (changed & DirtyPen)
            m_pen = now.pen();
        if (changed & DirtyBrush)
            m_brush = now.brush();
        if (changed & DirtyTransform)
            m_transform = now.transform();
        if ((changed & DirtyHints && now.renderHints() & QPainter::Antialiasing) ||
            (changed & DirtyOpacity && now.opacity() != 1.0) ||
            (changed & DirtyCompositionMode &&
             now.compositionMode() != QPainter::CompositionMode_SourceOver) ||
            (changed & DirtyClipEnabled && now.isClipEnabled()))
            strokes.isComplete = false;
    }

    using QPaintEngine::drawRects;
    void drawRects(const QRect *rects, int count) override
    {
        if (m_pen.style() != Qt::NoPen)
            strokes.isComplete = false;
        if (!isRecordable(m_brush))
            return;
        RecordedStrokes::Part part;
        part.brush = m_brush;
        part.rectangles.reserve(count);
        const int offsetX = int(m_transform.dx());
        const int offsetY = int(m_transform.dy());
        QPoint first(m_picture.width(), m_picture.height());
        QPoint last(-1, -1);
        for (int i = 0; i < count; ++i) {
            const int left = std::max(rects[i].left() + offsetX, 0);
            const int top = std::max(rects[i].top() + offsetY, 0);
            const int right = std::min(rects[i].right() + offsetX, m_picture.right());
            const int bottom = std::min(rects[i].bottom() + offsetY, m_picture.bottom());
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
        const bool isLine = m_pen.style() != Qt::NoPen;
        if (isLine ? m_brush.style() != Qt::NoBrush || !isSteadyLine(path) || !isRecordable(m_pen.brush())
                   : m_takesPaths || !isRecordable(m_brush)) {
            strokes.isComplete = false;
            return;
        }
        RecordedStrokes::Part part;
        part.path = path.translated(m_transform.dx(), m_transform.dy());
        part.pen = m_pen;
        part.brush = m_brush;
        const double reach = isLine ? m_pen.widthF() + 1.0 : 1.0;
        const QRectF bounds = part.path.controlPointRect().adjusted(-reach, -reach, reach, reach);
        if (!(bounds.left() > -nearPicture && bounds.right() < nearPicture && bounds.top() > -nearPicture &&
              bounds.bottom() < nearPicture)) {
            strokes.isComplete = false;
            return;
        }
        append(std::move(part), bounds.toAlignedRect() & m_picture);
    }

    void drawRects(const QRectF *, int) override { strokes.isComplete = false; }
    void drawLines(const QLine *, int) override { strokes.isComplete = false; }
    void drawLines(const QLineF *, int) override { strokes.isComplete = false; }
    void drawEllipse(const QRectF &) override { strokes.isComplete = false; }
    void drawEllipse(const QRect &) override { strokes.isComplete = false; }
    void drawPoints(const QPointF *, int) override { strokes.isComplete = false; }
    void drawPoints(const QPoint *, int) override { strokes.isComplete = false; }
    void drawPolygon(const QPointF *, int, PolygonDrawMode) override { strokes.isComplete = false; }
    void drawPolygon(const QPoint *, int, PolygonDrawMode) override { strokes.isComplete = false; }
    void drawPixmap(const QRectF &, const QPixmap &, const QRectF &) override { strokes.isComplete = false; }
    void drawTiledPixmap(const QRectF &, const QPixmap &, const QPointF &) override
    {
        strokes.isComplete = false;
    }
    void drawTextItem(const QPointF &, const QTextItem &) override { strokes.isComplete = false; }
    void drawImage(const QRectF &, const QImage &, const QRectF &, Qt::ImageConversionFlags) override
    {
        strokes.isComplete = false;
    }

protected:
    int metric(PaintDeviceMetric metric) const override
    {
        switch (metric) {
        case PdmWidth:
            return m_picture.width();
        case PdmHeight:
            return m_picture.height();
        case PdmDevicePixelRatio:
            return 1;
        case PdmDevicePixelRatioScaled:
            return int(devicePixelRatioFScale());
        default:
            // As an image has it: a painter that begins asks for it.
            return QImage(1, 1, QImage::Format_ARGB32_Premultiplied).logicalDpiX();
        }
    }

private:
    // Where translucent shapes overlap, one after the other on what is below is not the same as all of them
    // in one layer.
    bool isRecordable(const QBrush &brush)
    {
        const auto isWhole = [](double offset) { return offset == std::floor(offset); };
        strokes.isComplete = strokes.isComplete && brush.style() == Qt::SolidPattern && brush.isOpaque() &&
                             m_transform.type() <= QTransform::TxTranslate && isWhole(m_transform.dx()) &&
                             isWhole(m_transform.dy());
        return strokes.isComplete;
    }

    // The raster engine cuts thin lines and single ones off at the picture's edge before it finds their pixels.
    bool isSteadyLine(const QPainterPath &path) const
    {
        return m_pen.style() == Qt::SolidLine && m_pen.width() >= 2 && !m_pen.isCosmetic() &&
               m_pen.capStyle() == Qt::FlatCap && m_pen.joinStyle() == Qt::BevelJoin &&
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
    QRect m_picture;
    QPen m_pen;
    QBrush m_brush;
    QTransform m_transform;
};

} // namespace

QColor RecordedStrokes::Part::color() const
{
    return pen.style() != Qt::NoPen ? pen.color() : brush.color();
}

bool RecordedStrokes::Part::operator==(const Part &other) const
{
    return rectangles == other.rectangles && path == other.path && pen == other.pen && brush == other.brush;
}

void RecordedStrokes::paint(QPainter *painter, const QRegion &region) const
{
    for (const Part &part : parts) {
        if (!part.rectangles.isEmpty()) {
            if (fillPixels(painter, region, part.rectangles, part.brush.color()))
                continue;
            painter->setPen(Qt::NoPen);
            painter->setBrush(part.brush);
            painter->drawRects(part.rectangles);
        } else if (part.pen.style() == Qt::NoPen) {
            painter->fillPath(part.path, part.brush);
        } else {
            painter->setPen(part.pen);
            drawLinePath(painter, part.path);
        }
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
    return recorder.strokes;
}

} // namespace graph
