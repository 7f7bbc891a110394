#include "common/PixelMapping.h"

namespace graph {

PixelMapping::PixelMapping(double minX, double maxY, double rangeX, double rangeY, const QSizeF &size)
    : PixelMapping(PixelScale(minX, rangeX, size.width()), PixelScale(maxY, -rangeY, size.height()), size)
{
}

PixelMapping PixelMapping::fromScales(const QRectF &visible, float scaleX, float scaleY)
{
    const QSizeF extent(visible.width() * scaleX, visible.height() * scaleY);
    const double epsilon = std::numeric_limits<float>::epsilon();
    return PixelMapping(
        PixelScale(Scale(visible.x(), visible.width(), extent.width()), epsilon),
        PixelScale(Scale(visible.y() + visible.height(), -visible.height(), extent.height()), epsilon),
        extent + QSizeF(1.0, 1.0));
}

bool PixelMapping::isDrawable() const
{
    const auto usable = [](double scale) { return std::isfinite(scale) && scale != 0.0; };
    return m_size.width() > 1.0 && m_size.height() > 1.0 && usable(m_x.density()) && usable(m_y.density());
}

} // namespace graph
