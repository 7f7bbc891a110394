#include "kit/plots/PlotPlace.h"

#include "kit/data/Telling.h"
#include "view/base/AbstractPlot.h"
#include "view/frame/GraphView.h"

#include <QTimer>

namespace graph {

namespace {

constexpr int patience = 1000; // milliseconds

// A zoom rectangle or an axis makes a view of any item.
bool isInView(const AbstractPlot *plot)
{
    if (plot->zoomRect() || plot->axisX() || plot->axisY())
        return true;
    const QQuickItem *item = plot;
    while (item && !qobject_cast<const GraphView *>(item))
        item = item->parentItem();
    return item;
}

} // namespace

void tellOfPlaceLater(AbstractPlot *plot)
{
    QTimer::singleShot(patience, plot, [plot] {
        if (plot->window() && plot->isVisible() && !isInView(plot))
            tell(plot,
                 QStringLiteral(
                     "is in no chart and draws nothing: move it into the braces of a Chart or a GraphView"));
    });
}

} // namespace graph
