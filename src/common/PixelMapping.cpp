#include "common/PixelMapping.h"

namespace graph {

PixelMapping::PixelMapping(double minX, double maxY, double rangeX, double rangeY, const QSizeF &size)
    : m_minX(minX)
    , m_maxY(maxY)
    , m_size(size)
    , m_scaleX((size.width() - 1.0) / rangeX)
    , m_scaleY((size.height() - 1.0) / rangeY)
{
}

bool PixelMapping::isDrawable() const
{
    const auto usable = [](double scale) { return std::isfinite(scale) && scale != 0.0; };
    return m_size.width() > 1.0 && m_size.height() > 1.0 && usable(m_scaleX) && usable(m_scaleY);
}

} // namespace graph
