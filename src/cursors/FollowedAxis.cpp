#include "cursors/FollowedAxis.h"

#include "axis/ValueAxis.h"
#include "cursors/CursorDirection.h"
#include "view/base/AbstractPlot.h"

#include <utility>

namespace graph {

namespace {

const char *const axisSlot = SLOT(handleXAxisChanged(ValueAxis *));

} // namespace

FollowedAxis::FollowedAxis(QObject *cursor, const CursorDirection &direction,
                           std::function<void()> whenPlotEnds)
    : m_cursor(cursor)
    , m_direction(direction)
    , m_whenPlotEnds(std::move(whenPlotEnds))
{
}

ValueAxis *FollowedAxis::axis() const
{
    return m_axis;
}

// The cursor ends all of its connections to plots that leave its list; then those to the same plot are made again.
bool FollowedAxis::followPlot(AbstractPlot *plot)
{
    if (m_plot != plot) {
        if (m_plot)
            QObject::disconnect(m_plot, m_direction.axisChanged, m_cursor, axisSlot);
        QObject::disconnect(m_plotEnd);
    }
    m_plot = plot;
    if (!plot)
        return followAxis(nullptr);
    QObject::connect(plot, m_direction.axisChanged, m_cursor, axisSlot, Qt::UniqueConnection);
    if (!m_plotEnd)
        m_plotEnd = QObject::connect(plot, &QObject::destroyed, m_cursor, m_whenPlotEnds);
    return followAxis((plot->*m_direction.axis)());
}

bool FollowedAxis::followAxis(ValueAxis *axis)
{
    if (m_axis == axis)
        return false;
    if (m_axis)
        QObject::disconnect(m_axis, SIGNAL(valueRangeChanged()), m_cursor, SLOT(updateCursorPos()));
    m_axis = axis;
    if (axis)
        QObject::connect(axis, SIGNAL(valueRangeChanged()), m_cursor, SLOT(updateCursorPos()));
    return true;
}

} // namespace graph
