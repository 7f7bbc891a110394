#pragma once

#include "axis/AxisRange.h"
#include "common/PixelMapping.h"

#include <QList>
#include <QVector>

namespace graph {

// The ticks to draw, and how they came about.
struct TickSet
{
    QList<qreal> ticks;
    QList<qreal>
        positions; // the ticks are the visible ones among these; empty when they are multiples of interval
    QVector<double> minors; // lines without a label
    double interval = 0.0;
    bool isDecreasing = false;
};

// Where ticks are along an axis in a plot area, in pixels from its left or top.
class TickMarks
{
public:
    struct Mark
    {
        int index; // of the tick
        double place;
    };

    TickMarks(const TickSet &set, const AxisRange &range, Qt::Orientation orientation, const QSizeF &area);

    // False when there is nothing to draw: an area of at most one pixel, or a visible range that is 0 or not
    // finite.
    static bool areDrawable(const AxisRange &range, const QSizeF &area);

    const TickSet &set() const { return m_set; }
    // A decreasing axis shows the mirrored values, where the plots draw the plain ones.
    double place(double tick) const;
    // Those inside the plot area.
    QVector<Mark> visible() const;

    bool isHorizontal() const { return m_horizontal; }
    double length() const { return m_length; }
    // Whether a tick names an end of the full range.
    bool isExtreme(double tick) const;
    // The ends of the full range on the grid of the interval; NaN or infinite where there is none.
    double firstOnGrid() const;
    double lastOnGrid() const;

private:
    const TickSet &m_set;
    const AxisRange &m_range;
    bool m_horizontal;
    double m_length;
    PixelScale m_scale;
};

} // namespace graph
