#pragma once

#include "common/SafeInteger.h"

#include <QSizeF>

namespace graph {

// The one mapping between data values and the pixels of an item. The visible minimum falls on pixel 0, the visible
// maximum on the last pixel; y grows downwards in the item and upwards in the data. All formulas are plain IEEE
// arithmetic: a zero range or a size of 1 gives infinities or NaN, which isDrawable() reports.
class PixelMapping
{
public:
    // minX, maxY: the visible data values at the top left pixel; rangeX, rangeY: the visible spans, in data units;
    // size: of the item, in pixels.
    PixelMapping(double minX, double maxY, double rangeX, double rangeY, const QSizeF &size);

    // False when nothing can be drawn: an item of at most one pixel, or a scale that is 0 or not finite.
    bool isDrawable() const;

    double scaleX() const { return m_scaleX; }
    double scaleY() const { return m_scaleY; }
    double minX() const { return m_minX; }
    double maxY() const { return m_maxY; }
    double width() const { return m_size.width(); }
    double height() const { return m_size.height(); }

    // Item coordinates of data values, not rounded.
    double x(double value) const { return (value - m_minX) * m_scaleX; }
    double y(double value) const { return (m_maxY - value) * m_scaleY; }

    // Whole pixels of data values: truncated toward zero and clamped, see pixel().
    int column(double value) const { return pixel(x(value)); }
    int row(double value) const { return pixel(y(value)); }
    int roundedRow(double value) const { return roundedPixel(y(value)); }

private:
    double m_minX;
    double m_maxY;
    QSizeF m_size;
    double m_scaleX;
    double m_scaleY;
};

} // namespace graph
