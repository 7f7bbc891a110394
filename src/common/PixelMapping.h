#pragma once

#include "common/Export.h"
#include "common/PixelScale.h"

#include <QRectF>

namespace graph {

// The one mapping between data values and the pixels of an item. The visible minimum falls on pixel 0, the
// visible maximum on the last pixel; y grows downwards in the item and upwards in the data. All formulas are
// plain IEEE arithmetic: a zero range or a size of 1 gives infinities or NaN, which isDrawable() reports.
class GRAPH_CHARTS_EXPORT PixelMapping
{
public:
    // minX, maxY: the visible data values at the top left pixel; rangeX, rangeY: the visible spans, in data
    // units; size: of the item, in pixels.
    PixelMapping(double minX, double maxY, double rangeX, double rangeY, const QSizeF &size);

    // x: of an item of that size; y: from the top pixel downwards.
    PixelMapping(const PixelScale &x, const PixelScale &y, const QSizeF &size)
        : m_x(x)
        , m_y(y)
        , m_size(size)
    {
    }

    // The mapping of an item that shows `visible`, in data units, at so many pixels per unit; for callers
    // that know these in single precision.
    static PixelMapping fromScales(const QRectF &visible, float scaleX, float scaleY);

    // False when nothing can be drawn: an item of at most one pixel, or a scale that is 0 or not finite.
    bool isDrawable() const;

    // Pixels for each unit of the axis, or of the logarithm where the axis is not linear.
    double scaleX() const { return m_x.density(); }
    double scaleY() const { return -m_y.density(); }
    bool isLinearX() const { return m_x.isLinear(); }
    bool isLinearY() const { return m_y.isLinear(); }
    // Whether a point has a place: finite values, on a logarithmic axis positive ones.
    bool hasPlace(double valueX, double valueY) const
    {
        return std::isfinite(valueX) && hasPlaceY(valueY) && (valueX > 0.0 || m_x.isLinear());
    }
    bool hasPlaceY(double value) const { return std::isfinite(value) && (value > 0.0 || m_y.isLinear()); }
    double width() const { return m_size.width(); }
    double height() const { return m_size.height(); }

    // Item coordinates of data values, not rounded but for rounding errors beside a whole pixel.
    double x(double value) const { return m_x.coordinate(value); }
    double y(double value) const { return m_y.coordinate(value); }
    template <std::size_t count> void toY(double (&values)[count]) const { m_y.toCoordinates(values); }

    // Data values of item coordinates.
    double valueX(double coordinate) const { return m_x.value(coordinate); }
    double valueY(double coordinate) const { return m_y.value(coordinate); }

    // Whole pixels of data values: truncated toward zero and clamped, see pixel().
    int column(double value) const { return m_x.pixel(value); }
    // Where the axis is linear, for the innermost loops.
    int linearColumn(double value) const { return m_x.linearPixel(value); }
    // Whether column(value) <= column, of a linear axis.
    auto upToColumn(int column) const { return m_x.upTo(column); }
    // Of the axis, where the next column begins.
    double columnBorder(int column) const { return m_x.border(column); }
    int row(double value) const { return m_y.pixel(value); }
    int roundedLinearRow(double value) const { return m_y.roundedLinearPixel(value); }

private:
    PixelScale m_x;
    PixelScale m_y;
    QSizeF m_size;
};

} // namespace graph
