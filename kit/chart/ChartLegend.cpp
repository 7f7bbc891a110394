#include "kit/chart/ChartLegend.h"

#include "kit/chart/ChartPlots.h"
#include "kit/chart/ChartZoom.h"
#include "kit/chart/LegendSwitches.h"
#include "kit/data/Store.h"
#include "view/frame/GraphView.h"

namespace graph {

ChartLegend::ChartLegend(const GraphView *chart, LegendSwitches *switches, const ChartPlots *plots,
                         const ChartZoom *zoom)
    : m_chart(chart)
    , m_switches(switches)
    , m_plots(plots)
    , m_zoom(zoom)
{
    connect(&m_place, &LegendPlace::due, this, &ChartLegend::place);
}

bool ChartLegend::setSize(const QSizeF &size)
{
    return store(m_size, size);
}

void ChartLegend::place()
{
    if (m_switches->isPlaced())
        return;
    // New data come in at the left of a window that is not full yet, and at the right of one that rolls.
    if (m_zoom->follow() > 0.0) {
        if (m_zoom->isFollowing())
            m_switches->setDefaultCorner(m_zoom->newestPlace() < 0.5, false);
        m_switches->setWithoutCorner(false);
        return;
    }
    const QQuickItem *area = m_chart->plotArea();
    if (!m_place.find(m_plots->traces(), {m_chart->size(), area->size(), m_size}))
        return;
    const auto corner = m_place.corner().value_or(LegendPlace::Corner{true, false});
    m_switches->setDefaultCorner(corner.atRight, corner.atBottom);
    m_switches->setWithoutCorner(!m_place.corner());
}

} // namespace graph
