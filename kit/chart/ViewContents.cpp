#include "kit/chart/ViewContents.h"

#include "axis/ValueAxis.h"
#include "data/PlotData.h"
#include "view/base/AbstractPlot.h"
#include "view/frame/GraphView.h"
#include "view/frame/WorldPlot.h"

#include <QQuickWindow>

namespace graph {

namespace {

template <typename T> QVector<T *> elements(QQmlListProperty<T> list)
{
    QVector<T *> found;
    for (ListIndex i = 0; i < list.count(&list); ++i) {
        if (T *element = list.at(&list, i))
            found.append(element);
    }
    return found;
}

void collectPlots(const QQuickItem &item, QVector<AbstractPlot *> *plots)
{
    const QList<QQuickItem *> children = item.childItems();
    for (QQuickItem *child : children) {
        if (auto *plot = qobject_cast<AbstractPlot *>(child))
            plots->append(plot);
        else
            collectPlots(*child, plots);
    }
}

// A view may be in another one, such as a small chart in a large one.
const GraphView *viewAround(const AbstractPlot &plot)
{
    const QQuickItem *item = plot.parentItem();
    while (item && !qobject_cast<const GraphView *>(item))
        item = item->parentItem();
    return static_cast<const GraphView *>(item);
}

// Of another view's window neighbours only what uses an axis of this view and has no zoom of its own: an
// overview has.
bool belongsTo(const GraphView &view, const AbstractPlot &plot)
{
    if (isInside(&plot, view))
        return viewAround(plot) == &view;
    if (const auto *overview = qobject_cast<const WorldPlot *>(&plot))
        return !overview->graphPlot() && !overview->axisX() && !overview->axisY();
    const QVector<ValueAxis *> axes = axesOf(view);
    return !plot.zoomRect() &&
           ((plot.axisX() && axes.contains(plot.axisX())) || (plot.axisY() && axes.contains(plot.axisY())));
}

} // namespace

QVector<AbstractPlot *> plotsOf(const GraphView &view)
{
    QVector<AbstractPlot *> all;
    const QQuickItem *top = view.window() ? view.window()->contentItem() : &view;
    collectPlots(*top, &all);
    QVector<AbstractPlot *> plots;
    for (AbstractPlot *plot : all) {
        if (plot->isVisible() && belongsTo(view, *plot))
            plots.append(plot);
    }
    return plots;
}

QVector<ValueAxis *> axesOf(const GraphView &view)
{
    return elements(const_cast<GraphView &>(view).axes());
}

QVector<PlotData *> seriesOf(const GraphView &view)
{
    return elements(const_cast<GraphView &>(view).series());
}

bool isInside(const QQuickItem *item, const QQuickItem &ancestor)
{
    while (item && item != &ancestor)
        item = item->parentItem();
    return item;
}

} // namespace graph
