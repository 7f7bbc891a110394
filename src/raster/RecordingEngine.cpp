#include "raster/RecordingEngine.h"

#include <QImage>
#include <QPainter>

namespace graph {

RecordingEngine::RecordingEngine(const QSize &size)
    : QPaintEngine(AllFeatures)
    , m_picture(QPoint(0, 0), size)
{
}

void RecordingEngine::updateState(const QPaintEngineState &now)
{
    const DirtyFlags changed = now.state();
    if (changed & DirtyPen)
        m_pen = now.pen();
    if (changed & DirtyTransform)
        m_transform = now.transform();
    if ((changed & DirtyOpacity && now.opacity() != 1.0) ||
        (changed & DirtyCompositionMode && now.compositionMode() != QPainter::CompositionMode_SourceOver) ||
        (changed & DirtyClipEnabled && now.isClipEnabled()))
        refuse();
}

// Fonts in points have the size that they have on an image.
int RecordingEngine::metric(PaintDeviceMetric metric) const
{
    static const QImage image(1, 1, QImage::Format_ARGB32_Premultiplied);
    switch (metric) {
    case PdmWidth:
        return m_picture.width();
    case PdmHeight:
        return m_picture.height();
    case PdmDpiX:
        return image.logicalDpiX();
    case PdmDpiY:
        return image.logicalDpiY();
    case PdmPhysicalDpiX:
        return image.physicalDpiX();
    case PdmPhysicalDpiY:
        return image.physicalDpiY();
    case PdmDevicePixelRatio:
        return 1;
    case PdmDevicePixelRatioScaled:
        return int(devicePixelRatioFScale());
    default:
        return 0;
    }
}

} // namespace graph
