#pragma once

#include <QPaintEngine>
#include <QRect>
#include <QRegion>
#include <QVector>

class QColor;
class QPainter;

namespace graph {

// The engines of painters whose strokes are taken down: all of them as rectangles, or sloping lines as paths.
constexpr QPaintEngine::Type strokeRecorder = QPaintEngine::Type(QPaintEngine::User + 23);
constexpr QPaintEngine::Type pathRecorder = QPaintEngine::Type(QPaintEngine::User + 24);

// Whether the painter's own calls end in whole pixels that are either painted or not, on a raster image or
// where they are taken down.
bool isOnPixels(const QPainter &painter);

// Writes opaque rectangles into the image that a painter paints on, as far as they are inside a region in
// coordinates of the image: a painter's own call takes about fifty instructions for each row of each rectangle.
// False, with nothing painted, where the painter paints on something else than pixels of 32 bits, or not on
// whole ones.
bool fillPixels(QPainter *painter, const QRegion &region, const QVector<QRect> &rectangles,
                const QColor &color);

} // namespace graph
