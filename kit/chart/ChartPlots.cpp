#include "kit/chart/ChartPlots.h"

#include "axis/ValueAxis.h"
#include "data/PlotData.h"
#include "kit/plots/Shading.h"
#include "kit/plots/Trace.h"
#include "kit/plots/WaterfallPlot.h"
#include "view/base/AbstractPlot.h"
#include "view/frame/GraphView.h"

#include <algorithm>

namespace graph {

namespace {

// Deeper than that plots are not looked for: a Loader in an Item in an Item.
constexpr int greatestDepth = 4;

} // namespace

ChartPlots::ChartPlots(GraphView *view, const QVector<const QQuickItem *> &layers)
    : m_view(view)
    , m_layers(layers)
{
}

QVector<AbstractPlot *> ChartPlots::find()
{
    QVector<AbstractPlot *> plots;
    findIn(m_view, 0, &plots);
    return plots;
}

void ChartPlots::lookLater()
{
    if (std::exchange(m_isPending, true))
        return;
    QMetaObject::invokeMethod(this, &ChartPlots::lookNow, Qt::QueuedConnection);
}

void ChartPlots::lookNow()
{
    if (std::exchange(m_isPending, false))
        emit changed();
}

bool ChartPlots::setTraces(const QVector<AbstractPlot *> &plots)
{
    QVector<AbstractPlot *> traces;
    std::copy_if(plots.begin(), plots.end(), std::back_inserter(traces),
                 [](const AbstractPlot *plot) { return !isShading(*plot); });
    if (std::equal(m_traces.begin(), m_traces.end(), traces.begin(), traces.end()))
        return false;
    m_traces = QVector<QPointer<AbstractPlot>>(traces.begin(), traces.end());
    return true;
}

void ChartPlots::findIn(QQuickItem *item, int depth, QVector<AbstractPlot *> *plots)
{
    const QList<QQuickItem *> children = item->childItems();
    for (QQuickItem *child : children) {
        if (auto *plot = qobject_cast<AbstractPlot *>(child)) {
            plots->append(plot);
        } else if (depth < greatestDepth && isSearched(child)) {
            watchItem(child);
            findIn(child, depth + 1, plots);
        }
    }
}

bool ChartPlots::isSearched(const QQuickItem *child) const
{
    return child != m_view->plotArea() && !m_layers.contains(child) &&
           !child->inherits("QQuickPaintedItem") && !qobject_cast<const GraphView *>(child);
}

void ChartPlots::watchItem(const QQuickItem *item)
{
    if (addToWatched(item))
        connect(item, &QQuickItem::childrenChanged, this, &ChartPlots::lookLater);
}

void ChartPlots::placeInstantiated()
{
    const QObjectList objects = static_cast<const QObject *>(m_view)->children();
    for (QObject *object : objects) {
        if (!object->inherits("QQmlInstantiator") || !addToWatched(object))
            continue;
        connect(object, SIGNAL(objectAdded(int, QObject *)), this, SLOT(place(int, QObject *)));
        const int count = object->property("count").toInt();
        for (int i = 0; i < count; ++i) {
            QObject *made = nullptr;
            QMetaObject::invokeMethod(object, "objectAt", Q_RETURN_ARG(QObject *, made), Q_ARG(int, i));
            place(i, made);
        }
    }
}

void ChartPlots::place(int, QObject *object)
{
    auto *plot = qobject_cast<AbstractPlot *>(object);
    if (plot && !plot->parentItem())
        plot->setParentItem(m_view);
    else if (auto *axis = qobject_cast<ValueAxis *>(object))
        emit axisMade(axis);
}

bool ChartPlots::watch(AbstractPlot *plot)
{
    const bool isNew = !m_watched.contains(plot);
    if (isNew) {
        m_watched.insert(plot);
        connect(plot, &AbstractPlot::plotDataChanged, this, [this, plot] { watchData(plot); });
        connect(plot, &AbstractPlot::axisXChanged, this, &ChartPlots::lookLater);
        connect(plot, &AbstractPlot::axisYChanged, this, &ChartPlots::lookLater);
        connect(plot, &QQuickItem::visibleChanged, this, &ChartPlots::dataChanged);
        if (auto *trace = qobject_cast<Trace *>(plot)) {
            connect(trace, &Trace::styleChanged, this, &ChartPlots::dataChanged);
            connect(trace, &Trace::lineWidthChanged, this, &ChartPlots::dataChanged);
            connect(trace, &Trace::nameChanged, this, &ChartPlots::dataChanged);
            connect(trace, &Trace::colorChanged, this, &ChartPlots::dataChanged);
            connect(trace, &Trace::readingsChanged, this, &ChartPlots::readingsChanged);
        }
        if (const auto *points = qobject_cast<const GraphPlot *>(plot))
            connect(points, &GraphPlot::graphPointChanged, this, &ChartPlots::lookLater);
        if (auto *waterfall = qobject_cast<WaterfallPlot *>(plot)) {
            connect(waterfall, &WaterfallPlot::rowsChanged, this, &ChartPlots::dataChanged);
            connect(waterfall, &WaterfallPlot::rowIntervalChanged, this, &ChartPlots::dataChanged);
            connect(waterfall, &WaterfallPlot::directionChanged, this, &ChartPlots::dataChanged);
        }
        connect(plot, &QObject::destroyed, this, [this, plot] { emit plotDestroyed(plot); });
    }
    watchData(plot);
    return isNew;
}

void ChartPlots::forget(const AbstractPlot *plot)
{
    m_watched.remove(plot);
}

void ChartPlots::unwatch(AbstractPlot *plot)
{
    disconnect(plot, nullptr, this, nullptr);
}

void ChartPlots::watchData(const AbstractPlot *plot)
{
    const PlotData *data = plot->plotData();
    if (data && addToWatched(data)) {
        connect(data, &PlotData::plotChanged, this, &ChartPlots::dataChanged);
        connect(data, &QObject::destroyed, this, &ChartPlots::dataChanged);
    }
    emit dataChanged();
}

bool ChartPlots::addToWatched(const QObject *object)
{
    if (m_watched.contains(object))
        return false;
    m_watched.insert(object);
    connect(object, &QObject::destroyed, this, [this, object] { m_watched.remove(object); });
    return true;
}

} // namespace graph
