#pragma once

#include <QBrush>
#include <QColor>
#include <QImage>
#include <QPainterPath>
#include <QPen>
#include <QRect>
#include <QRegion>
#include <QSize>
#include <QVector>

#include <functional>
#include <vector>

class QPainter;

namespace graph {

// Opaque rectangles, lines and areas, perhaps over a picture, taken down as they were painted. Painted anywhere on whole
// pixels, they cover the pixels that they would have covered then.
struct RecordedStrokes
{
    // A picture, rectangles, or else a path: a line where there is a pen, an area without one.
    struct Part
    {
        QImage picture;
        QRect place; // of what can be seen of the picture
        QPoint seen; // the first pixel of it in the picture
        QVector<QRect> rectangles;
        QPainterPath path;
        QPen pen{Qt::NoPen};
        QBrush brush;

        QColor color() const;
        bool operator==(const Part &other) const;
    };

    std::vector<Part> parts;
    QRect bounds; // of all that lies within the picture
    // False where something else was painted, or where its pixels would depend on the place.
    bool isComplete = true;

    bool areRectangles() const;
    // Inside a region of the device.
    void paint(QPainter *painter, const QRegion &region) const;
    // A part of the picture.
    QImage image(const QRect &part) const;
    bool operator==(const RecordedStrokes &other) const { return parts == other.parts; }
};

// How a sloping line is taken down: as the pixels that the raster engine would paint, or as it is, for an engine
// that finds them itself.
enum class SlopingLines { AsPixels, AsPaths };

// What a function paints into a picture of that size.
RecordedStrokes recordedStrokes(const QSize &size, const std::function<void(QPainter *)> &paint,
                                SlopingLines lines = SlopingLines::AsPixels);

} // namespace graph
