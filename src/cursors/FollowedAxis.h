#pragma once

#include <QObject>
#include <QPointer>

#include <functional>

class AbstractPlot;
class ValueAxis;

namespace graph {

struct CursorDirection;

// The axis that places a cursor: that of one plot, which is heard for another axis and for its end. The axes of other
// plots do not move the cursor.
class FollowedAxis
{
public:
    // The cursor, which has the slots, and what it does after the plot's end.
    FollowedAxis(QObject *cursor, const CursorDirection &direction, std::function<void()> whenPlotEnds);

    ValueAxis *axis() const;
    // True if the axis is another one than before; null: there is none.
    bool followPlot(AbstractPlot *plot);
    bool followAxis(ValueAxis *axis);

private:
    QObject *m_cursor;
    const CursorDirection &m_direction;
    std::function<void()> m_whenPlotEnds;
    QPointer<AbstractPlot> m_plot;
    QPointer<ValueAxis> m_axis;
    QMetaObject::Connection m_plotEnd;
};

} // namespace graph
