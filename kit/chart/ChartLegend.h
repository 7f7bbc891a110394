#pragma once

#include "kit/chart/LegendPlace.h"

#include <QObject>
#include <QSizeF>

class GraphView;

namespace graph {

class ChartPlots;
class ChartZoom;
class LegendSwitches;

// The place of a chart's legend, as long as the document does not say it.
class ChartLegend : public QObject
{
    Q_OBJECT

public:
    ChartLegend(const GraphView *chart, LegendSwitches *switches, const ChartPlots *plots,
                const ChartZoom *zoom);

    // Of the legend without values.
    QSizeF size() const { return m_size; }
    // False when it is the same.
    bool setSize(const QSizeF &size);

    void place();

private:
    const GraphView *m_chart;
    LegendSwitches *m_switches;
    const ChartPlots *m_plots;
    const ChartZoom *m_zoom;
    LegendPlace m_place;
    QSizeF m_size;
};

} // namespace graph
