#pragma once

#include "common/Export.h"
#include "kit/chart/LeastPositive.h"
#include "kit/chart/Span.h"
#include "kit/plots/DataExtent.h"
#include "view/base/AbstractPlot.h"

#include <QHash>
#include <QList>
#include <QPointer>
#include <QVector>

class ValueAxis;

namespace graph {

// How far the data of visible plots reach along their axes, in units of the axis. Plots that are asked about again
// answer from the first time: make one for each look at the data.
class GRAPH_CHARTS_EXPORT PlottedData
{
public:
    // known: from one look to the next.
    PlottedData(const QList<AbstractPlot *> &plots, LeastPositive *known)
        : m_plots(plots.begin(), plots.end())
        , m_leastPositive(known)
    {
    }

    // Empty without a finite sample; `onlyVisible`: of the samples at the visible x.
    Span along(const ValueAxis *axis, bool onlyVisible) const;
    // 0 where there is none.
    double leastPositiveAlong(const ValueAxis *axis, bool onlyVisible) const;
    // Whether bars or areas begin at the baseline of the axis.
    bool restOnBaseline(const ValueAxis *axis) const;
    // What plots draw around their samples, as a share of the axis' length.
    double reachBeyond(const ValueAxis *axis) const;
    // Whether a plot colours all of the range of the axis.
    bool fill(const ValueAxis *axis) const;

private:
    QList<AbstractPlot *> plotsOn(const ValueAxis *axis) const;
    DataExtent extent(const AbstractPlot *plot) const;
    Span reach(const AbstractPlot *plot, const ValueAxis *axis) const;

    // Those who hear of a new range may take a plot away.
    QVector<QPointer<AbstractPlot>> m_plots;
    LeastPositive *m_leastPositive;
    mutable QHash<const AbstractPlot *, DataExtent> m_extents;
};

} // namespace graph
