#include "kit/plots/PlotPlace.h"

#include "kit/data/ItemName.h"
#include "kit/data/Telling.h"
#include "view/base/AbstractPlot.h"
#include "view/frame/GraphView.h"

#include <QPointer>
#include <QTimer>

namespace graph {

namespace {

constexpr int patience = 1000; // milliseconds

// A zoom rectangle or an axis makes a view of any item. Nobody looks for plots in other plots.
QString placeOutOfView(const AbstractPlot *plot)
{
    if (plot->zoomRect() || plot->axisX() || plot->axisY())
        return {};
    for (const QQuickItem *item = plot->parentItem(); item; item = item->parentItem()) {
        if (qobject_cast<const AbstractPlot *>(item))
            return nameOf(item) + QStringLiteral(" instead of a chart");
        if (qobject_cast<const GraphView *>(item))
            return {};
    }
    return QStringLiteral("no chart");
}

} // namespace

void tellOfPlaceLater(AbstractPlot *plot)
{
    const QPointer<const QQuickItem> parent = plot->parentItem();
    QTimer::singleShot(patience, plot, [plot, parent] {
        // On its way from one chart to another, perhaps: it has the same time again.
        if (plot->parentItem() != parent.data()) {
            tellOfPlaceLater(plot);
            return;
        }
        const QString place = placeOutOfView(plot);
        if (plot->window() && plot->isVisible() && !place.isEmpty())
            tell(plot, QStringLiteral(
                           "is in %1 and draws nothing: move it into the braces of a Chart or a GraphView")
                           .arg(place));
    });
}

} // namespace graph
