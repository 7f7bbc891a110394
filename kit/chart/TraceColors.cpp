#include "kit/chart/TraceColors.h"

#include "kit/chart/ChartTheme.h"
#include "kit/plots/Trace.h"
#include "kit/plots/WaterfallPlot.h"
#include "plots/HeatmapPlot.h"
#include "view/base/AbstractPlot.h"

#include <algorithm>

namespace graph {

void TraceColors::give(const QVector<QPointer<AbstractPlot>> &traces, const ChartTheme &theme)
{
    for (AbstractPlot *plot : traces) {
        if (!plot || !isChoiceOfChart(plot))
            continue;
        if (!m_given.contains(plot))
            m_given.insert(plot, {freePlace(), {}});
        Given &given = m_given[plot];
        given.color = theme.traceColor(given.place);
        if (auto *trace = qobject_cast<Trace *>(plot)) {
            trace->setDefaultColor(given.color);
            trace->setDefaultLineWidth(theme.lineWidth());
        } else {
            plot->setPenColor(given.color);
            plot->update();
        }
    }
}

// Plots other than traces do not say whether their colour was chosen, but one that was given none is black.
bool TraceColors::isChoiceOfChart(const AbstractPlot *plot) const
{
    if (const auto *trace = qobject_cast<const Trace *>(plot))
        return !trace->hasOwnColor();
    if (qobject_cast<const WaterfallPlot *>(plot) || qobject_cast<const HeatmapPlot *>(plot))
        return false;
    const auto given = m_given.constFind(plot);
    return plot->penColor() == (given == m_given.cend() ? QColor(Qt::black) : given->color);
}

int TraceColors::freePlace() const
{
    int place = 0;
    const auto isTaken = [&place](const Given &other) { return other.place == place; };
    while (std::any_of(m_given.cbegin(), m_given.cend(), isTaken))
        ++place;
    return place;
}

} // namespace graph
