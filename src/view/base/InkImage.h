#pragma once

#include <QImage>
#include <QRect>

namespace graph {

// The smallest rectangle around the pixels of a part of a picture that are not transparent.
QRect inkOf(const QImage &picture, const QRect &part);

// That rectangle of the picture for an image node, with a transparent row at the end: the software scene graph takes an
// image without one for opaque, and cuts it out of all that is behind, which costs more than to paint over it.
QImage stampImage(const QImage &picture, const QRect &ink);

} // namespace graph
