#include "raster/PixelFill.h"

#include <QImage>
#include <QPainter>

#include <algorithm>

namespace graph {

namespace {

// The painter's image, where its pixels can be written.
QImage *writableImage(const QPainter &painter)
{
    if (painter.device()->devType() != QInternal::Image ||
        painter.paintEngine()->type() != QPaintEngine::Raster)
        return nullptr;
    auto *image = static_cast<QImage *>(painter.device());
    const bool isKnown =
        image->format() == QImage::Format_RGB32 || image->format() == QImage::Format_ARGB32_Premultiplied;
    // A shared one would become another image below the painter.
    return isKnown && image->isDetached() && image->devicePixelRatio() == 1.0 ? image : nullptr;
}

void fillRows(uchar *row, qsizetype bytesPerLine, int width, int rows, QRgb color)
{
    const QRgb pattern[] = {color, color, color, color};
    if (width >= 4) {
        for (int y = 0; y < rows; ++y, row += bytesPerLine)
            fillWide<4>(row, width, pattern);
    } else if (width >= 2) {
        for (int y = 0; y < rows; ++y, row += bytesPerLine)
            fillWide<2>(row, width, pattern);
    } else {
        for (int y = 0; y < rows; ++y, row += bytesPerLine)
            fillWide<1>(row, width, pattern);
    }
}

void fillClipped(uchar *bits, qsizetype bytesPerLine, const QRect &clip, const QVector<QRect> &rectangles,
                 const QPoint &offset, QRgb color)
{
    const int clipRight = clip.x() + clip.width();
    const int clipBottom = clip.y() + clip.height();
    for (const QRect &rectangle : rectangles) {
        const int left = std::max(rectangle.x() + offset.x(), clip.x());
        const int right = std::min(rectangle.x() + rectangle.width() + offset.x(), clipRight);
        const int top = std::max(rectangle.y() + offset.y(), clip.y());
        const int bottom = std::min(rectangle.y() + rectangle.height() + offset.y(), clipBottom);
        if (left < right && top < bottom)
            fillRows(bits + top * bytesPerLine + left * qsizetype(sizeof(QRgb)), bytesPerLine, right - left,
                     bottom - top, color);
    }
}

} // namespace

bool isOnPixels(const QPainter &painter)
{
    const QPaintEngine::Type type = painter.paintEngine()->type();
    return (type == QPaintEngine::Raster || type == strokeRecorder || type == pathRecorder) &&
           !painter.testRenderHint(QPainter::Antialiasing) &&
           painter.deviceTransform().type() <= QTransform::TxTranslate;
}

std::optional<WritablePixels> writablePixels(QPainter *painter, const QColor &color)
{
    QImage *image = isOnPixels(*painter) ? writableImage(*painter) : nullptr;
    const QTransform &transform = painter->deviceTransform();
    const QPoint offset(int(transform.dx()), int(transform.dy()));
    if (!image || color.alpha() < 255 || offset != QPointF(transform.dx(), transform.dy()))
        return {};
    return WritablePixels{image->bits(), image->bytesPerLine(), image->rect(), offset};
}

bool fillPixels(QPainter *painter, const QRegion &region, const QVector<QRect> &rectangles,
                const QColor &color)
{
    const std::optional<WritablePixels> pixels = writablePixels(painter, color);
    if (!pixels)
        return false;
    for (const QRect &clip : region)
        fillClipped(pixels->bits, pixels->bytesPerLine, clip & pixels->rect, rectangles, pixels->offset,
                    color.rgba());
    return true;
}

} // namespace graph
