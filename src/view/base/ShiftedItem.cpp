#include "view/base/ShiftedItem.h"

#include "raster/PixelCentres.h"

#include <QPainter>

#include <utility>

namespace graph {

double ShiftedItem::framebufferShift() const
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    return 0.0;
#else
    return renderTarget() == Image ? 0.0 : 1.0;
#endif
}

double ShiftedItem::shiftOn(const QPainter &painter) const
{
    return isScaled(painter) ? 0.0 : framebufferShift();
}

void ShiftedItem::paint(QPainter *painter)
{
    const double shift = shiftOn(*painter);
    if (shift != 0.0)
        painter->translate(shift, shift);
    paintShifted(painter);
}

// Called while the GUI thread waits. The layer, and with it the texture, comes with the next frame.
QSGTextureProvider *ShiftedItem::textureProvider() const
{
    // The item's own layer is no business of the painted item, which it is asked past.
    // NOLINTBEGIN(bugprone-parent-virtual-call)
    if (QQuickItem::isTextureProvider())
        return QQuickItem::textureProvider();
    // NOLINTEND(bugprone-parent-virtual-call)
    if (!std::exchange(m_isTextureAsked, true))
        const_cast<ShiftedItem *>(this)->update();
    return QQuickPaintedItem::textureProvider();
}

} // namespace graph
