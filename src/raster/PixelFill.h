#pragma once

#include <QPaintEngine>
#include <QRect>
#include <QRegion>
#include <QRgb>
#include <QVector>

#include <cstring>
#include <optional>

class QColor;
class QPainter;

namespace graph {

// The engines of painters whose strokes are taken down: all of them as rectangles, or sloping lines as paths.
constexpr QPaintEngine::Type strokeRecorder = QPaintEngine::Type(QPaintEngine::User + 23);
constexpr QPaintEngine::Type pathRecorder = QPaintEngine::Type(QPaintEngine::User + 24);

// Whether the painter's own calls end in whole pixels that are either painted or not, on a raster image or
// where they are taken down.
bool isOnPixels(const QPainter &painter);

// The pixels of 32 bits that a painter paints on.
struct WritablePixels
{
    uchar *bits = nullptr;
    qsizetype bytesPerLine = 0;
    QRect rect;
    QPoint offset; // from the painter's coordinates
};

// Nothing where an opaque colour would not simply be written there.
std::optional<WritablePixels> writablePixels(QPainter *painter, const QColor &color);

// Pixels beside each other, most of the time a few: as wide stores, of which the last two may overlap.
template <int pixelsAtOnce> void fillWide(uchar *row, int width, const QRgb *pattern)
{
    constexpr int bytes = pixelsAtOnce * int(sizeof(QRgb));
    for (int x = 0; x + pixelsAtOnce < width; x += pixelsAtOnce)
        std::memcpy(row + x * sizeof(QRgb), pattern, bytes);
    std::memcpy(row + (width - pixelsAtOnce) * sizeof(QRgb), pattern, bytes);
}

// width: at least 1.
inline void fillRow(uchar *row, int width, QRgb color)
{
    const QRgb pattern[] = {color, color, color, color};
    if (width >= 4)
        fillWide<4>(row, width, pattern);
    else if (width >= 2)
        fillWide<2>(row, width, pattern);
    else
        fillWide<1>(row, width, pattern);
}

// Writes opaque rectangles into the image that a painter paints on, as far as they are inside a region in
// coordinates of the image: a painter's own call takes about fifty instructions for each row of each rectangle.
// False, with nothing painted, where the painter paints on something else than pixels of 32 bits, or not on
// whole ones.
bool fillPixels(QPainter *painter, const QRegion &region, const QVector<QRect> &rectangles,
                const QColor &color);

} // namespace graph
