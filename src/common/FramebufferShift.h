#pragma once

#include <QQuickPaintedItem>

namespace graph {

// How far to the right and down an item draws, in pixels: by one into a framebuffer object, unshifted into an
// image. Qt 6 has no such objects and paints every item into an image; the property has no effect.
inline double framebufferShift(const QQuickPaintedItem &item)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    Q_UNUSED(item)
    return 0.0;
#else
    return item.renderTarget() == QQuickPaintedItem::Image ? 0.0 : 1.0;
#endif
}

} // namespace graph
