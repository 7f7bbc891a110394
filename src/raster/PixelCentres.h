#pragma once

#include <QPoint>
#include <QTransform>

#include <optional>

class QPainter;

namespace graph {

// While it lives, lines of the painter's pen through whole coordinates cover what they cover where whole pixels are
// painted: those of an odd width run through the centres of the pixels that the coordinates name. Scaled, and in vectors,
// such coordinates are the corners between pixels.
class PixelCentres
{
public:
    // across: 1 for the directions across the lines; ends that are cut at a whole coordinate stay there.
    explicit PixelCentres(QPainter *painter, const QPoint &across = {1, 1});
    ~PixelCentres();
    PixelCentres(const PixelCentres &) = delete;
    PixelCentres &operator=(const PixelCentres &) = delete;

private:
    QPainter *m_painter;
    std::optional<QTransform> m_before;
};

// Whether a coordinate is more or less than a pixel of the device.
bool isScaled(const QPainter &painter);

} // namespace graph
