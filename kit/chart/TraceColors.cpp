#include "kit/chart/TraceColors.h"

#include "kit/chart/ChartTheme.h"
#include "kit/plots/Trace.h"
#include "kit/plots/WaterfallPlot.h"
#include "plots/HeatmapPlot.h"
#include "view/base/AbstractPlot.h"

namespace graph {

void TraceColors::give(const QVector<QPointer<AbstractPlot>> &traces, const ChartTheme &theme)
{
    for (AbstractPlot *plot : traces) {
        if (!plot || !isChoiceOfChart(plot))
            continue;
        if (!m_given.contains(plot))
            m_given.insert(plot, {takePlace(), {}});
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

void TraceColors::forget(const AbstractPlot *plot)
{
    const auto given = m_given.constFind(plot);
    if (given == m_given.cend())
        return;
    m_taken.remove(given->place);
    m_firstFree = qMin(m_firstFree, given->place);
    m_given.erase(given);
}

int TraceColors::takePlace()
{
    while (m_taken.contains(m_firstFree))
        ++m_firstFree;
    m_taken.insert(m_firstFree);
    return m_firstFree;
}

} // namespace graph
