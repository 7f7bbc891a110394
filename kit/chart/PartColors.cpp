#include "kit/chart/PartColors.h"

#include "kit/chart/ChartTheme.h"
#include "plots/GraphBands.h"
#include "plots/GraphPlot.h"
#include "plots/GraphPointMarker.h"

namespace graph {

void PartColors::give(const QList<AbstractPlot *> &plots, const ChartTheme &theme)
{
    const QColor text = theme.textColor();
    for (AbstractPlot *plot : plots) {
        auto *bands = qobject_cast<GraphBands *>(plot);
        if (bands) {
            bands->setLabelPen(chosen(bands->labelPen(), text));
            const QColor fill = chosen(bands->penColor(), text);
            if (fill != bands->penColor()) {
                bands->setPenColor(fill);
                bands->update();
            }
        }
        const auto *points = qobject_cast<GraphPlot *>(plot);
        if (auto *marker = points ? qobject_cast<GraphPointMarker *>(points->graphPoint()) : nullptr)
            marker->setLabelColor(chosen(marker->labelColor(), text));
    }
    m_given = text;
}

QColor PartColors::chosen(const QColor &present, const QColor &given) const
{
    return present == QColor(Qt::black) || present == m_given ? given : present;
}

} // namespace graph
