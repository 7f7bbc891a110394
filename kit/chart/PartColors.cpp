#include "kit/chart/PartColors.h"

#include "kit/chart/ChartTheme.h"
#include "plots/GraphBands.h"
#include "plots/GraphPlot.h"
#include "plots/GraphPointMarker.h"

namespace graph {

void PartColors::give(const QList<AbstractPlot *> &plots, const ChartTheme &theme)
{
    const QColor text = theme.textColor();
    const QFont font = theme.font();
    for (AbstractPlot *plot : plots) {
        auto *bands = qobject_cast<GraphBands *>(plot);
        if (bands) {
            bands->setLabelPen(chosen(bands->labelPen(), text));
            bands->setLabelFont(chosenFont(bands->labelFont(), font));
            const QColor fill = chosen(bands->penColor(), text);
            if (fill != bands->penColor()) {
                bands->setPenColor(fill);
                bands->update();
            }
        }
        const auto *points = qobject_cast<GraphPlot *>(plot);
        if (auto *marker = points ? qobject_cast<GraphPointMarker *>(points->graphPoint()) : nullptr) {
            marker->setLabelColor(chosen(marker->labelColor(), text));
            marker->setDefaultFont(font);
        }
    }
    m_given = text;
    m_givenFont = font;
}

QColor PartColors::chosen(const QColor &present, const QColor &given) const
{
    return present == QColor(Qt::black) || present == m_given ? given : present;
}

QFont PartColors::chosenFont(const QFont &present, const QFont &given) const
{
    static const QFont byDefault = GraphBands().labelFont();
    QFont font = present;
    if (present.family() == byDefault.family() || present.family() == m_givenFont.family())
        font.setFamily(given.family());
    if (present.pixelSize() == byDefault.pixelSize() || present.pixelSize() == m_givenFont.pixelSize())
        font.setPixelSize(given.pixelSize());
    return font;
}

} // namespace graph
