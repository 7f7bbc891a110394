#pragma once

#include <QImage>
#include <QRect>
#include <QVector>

namespace graph {

// The smallest rectangle around the pixels of a part of a picture that are not transparent; null without any.
QRect inkOf(const QImage &picture, const QRect &part);

// Rectangles, from top to bottom, that have all such pixels of a picture, and little else. They begin at some of those rows.
QVector<QRect> inkParts(const QImage &picture, QVector<int> rows);

// What an image node shows of such a rectangle has a transparent row at the end: the software scene graph takes an image
// without one for opaque, and cuts it out of all that is behind, which costs more than to paint over it.
QRect withTransparentRow(const QRect &ink);
QImage stampImage(const QImage &picture, const QRect &ink);

} // namespace graph
