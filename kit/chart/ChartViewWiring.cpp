#include "kit/chart/ChartView.h"

#include "kit/axis/ChartAxis.h"
#include "cursors/GraphCursor.h"
#include "data/PlotData.h"
#include "kit/chart/ChartTheme.h"
#include "kit/data/ItemName.h"
#include "kit/data/Telling.h"
#include "kit/plots/Trace.h"
#include "kit/plots/WaterfallPlot.h"
#include "view/base/AbstractPlot.h"
#include "view/base/XYScale.h"
#include "view/zoom/ZoomRect.h"

#include <QQuickWindow>

#include <algorithm>

// What the chart does with the items that come into it and go.

namespace graph {

namespace {

// Deeper than that traces are not looked for: a Loader in an Item in an Item.
constexpr int greatestDepth = 4;
// Between the labels of an axis and what is beyond them, in pixels.
constexpr int labelRoom = 6;

// Now, because the axes of the chart are about to replace it.
void tellOfRefusedAxis(const AbstractPlot *plot, const ValueAxis *axis, const char *property,
                       const char *direction, const char *otherProperty, const char *alignment)
{
    if (!axis)
        return;
    tell(plot, QStringLiteral(
                   "gets the %1 of the chart, because %2, given as its %1, is %3: write alignment: %4 in "
                   "it, or %5 instead of %1 here")
                   .arg(QLatin1String(property), nameOf(axis), QLatin1String(direction),
                        QLatin1String(alignment), QLatin1String(otherProperty)));
}

bool hasSize(const QQuickItem *item)
{
    return item->width() != 0.0 || item->height() != 0.0;
}

} // namespace

void ChartView::componentComplete()
{
    m_complete = true;
    gatherAxes();
    // The view warns of axes that chose no plane, and of a view without any.
    QQmlListProperty<ValueAxis> list = axes();
    for (const FittedAxis &fitted : m_axes)
        list.append(&list, fitted.axis());
    GraphView::componentComplete();
    // The planes announced their axes before the view listened.
    makeRoom();
    wire();
    updateRanges();
    m_history = ZoomHistory(m_shown);
}

void ChartView::itemChange(ItemChange change, const ItemChangeData &data)
{
    if (m_complete && change == ItemChildAddedChange) {
        wireLater();
    } else if (m_complete && change == ItemChildRemovedChange) {
        m_children.removeAll(data.item);
        m_scales.forget(data.item);
        makeRoom();
        if (auto *plot = qobject_cast<AbstractPlot *>(data.item))
            dropPlot(plot);
        wireLater();
    }
    GraphView::itemChange(change, data);
}

// Not at once: a document has not yet said anything about an item that has just got its parent.
void ChartView::wireLater()
{
    if (m_wirePending || !m_ears)
        return;
    m_wirePending = true;
    QMetaObject::invokeMethod(
        m_ears.get(), [this] { wire(); }, Qt::QueuedConnection);
}

void ChartView::wire()
{
    m_wirePending = false;
    watchInstantiators();
    adoptNewChildren();
    QList<AbstractPlot *> found;
    gatherPlots(this, 0, found);
    const auto taken = plots();
    for (AbstractPlot *plot : taken) {
        if (!found.contains(plot))
            dropPlot(plot);
    }
    for (AbstractPlot *plot : qAsConst(found)) {
        if (!plots().contains(plot))
            addPlot(plot);
        adoptPlot(plot);
    }
    gatherAxes();
    dressCursors();
    handlePlotVisibilityChanged();
    if (!std::equal(m_traces.begin(), m_traces.end(), found.begin(), found.end())) {
        m_traces = QVector<QPointer<AbstractPlot>>(found.begin(), found.end());
        m_traceColors.give(m_traces, *m_colors);
        emit tracesChanged();
    }
    updateRangesLater();
}

void ChartView::adoptNewChildren()
{
    const QList<QQuickItem *> children = childItems();
    for (QQuickItem *child : children) {
        if (!m_children.contains(child))
            adoptChild(child);
    }
}

void ChartView::adoptChild(QQuickItem *child)
{
    m_children.append(child);
    drawAsImage(child);
    const bool isPlane = qobject_cast<XYScale *>(child);
    const bool isDrawn = qobject_cast<AbstractPlot *>(child) || qobject_cast<GraphCursor *>(child);
    if (adoptScale(child))
        return;
    if (child == m_underlay)
        stretch(child, this);
    else if (child == plotArea() || child == m_overlay || isPlane || isDrawn || !hasSize(child))
        GraphView::adoptChild(child);
}

void ChartView::gatherPlots(QQuickItem *item, int depth, QList<AbstractPlot *> &plots)
{
    const QList<QQuickItem *> children = item->childItems();
    for (QQuickItem *child : children) {
        if (auto *plot = qobject_cast<AbstractPlot *>(child)) {
            plots.append(plot);
            if (item == this)
                continue;
            if (!hasSize(plot))
                stretch(plot, item);
            plot->setZoomRect(zoomRect());
        } else if (child != m_underlay && child != m_overlay && child != plotArea() &&
                   depth < greatestDepth && !child->inherits("QQuickPaintedItem") &&
                   !qobject_cast<GraphView *>(child)) {
            if (!m_watched.contains(child)) {
                m_watched.insert(child);
                connect(child, &QQuickItem::childrenChanged, m_ears.get(), [this] { wireLater(); });
                connect(child, &QObject::destroyed, m_ears.get(), [this, child] { m_watched.remove(child); });
            }
            gatherPlots(child, depth + 1, plots);
        }
    }
}

// What an Instantiator makes has no place in the scene until somebody gives it one.
void ChartView::watchInstantiators()
{
    const QObjectList objects = QObject::children();
    for (QObject *object : objects) {
        if (!object->inherits("QQmlInstantiator") || m_watched.contains(object))
            continue;
        m_watched.insert(object);
        connect(object, &QObject::destroyed, m_ears.get(), [this, object] { m_watched.remove(object); });
        connect(object, SIGNAL(objectAdded(int, QObject *)), this, SLOT(takeTrace(int, QObject *)));
        const int count = object->property("count").toInt();
        for (int i = 0; i < count; ++i) {
            QObject *made = nullptr;
            QMetaObject::invokeMethod(object, "objectAt", Q_RETURN_ARG(QObject *, made), Q_ARG(int, i));
            takeTrace(i, made);
        }
    }
}

void ChartView::takeTrace(int, QObject *object)
{
    auto *plot = qobject_cast<AbstractPlot *>(object);
    if (plot && !plot->parentItem())
        plot->setParentItem(this);
    else if (auto *axis = qobject_cast<ValueAxis *>(object))
        adoptAxis(axis, true);
}

void ChartView::adoptPlot(AbstractPlot *plot)
{
    if (!m_watched.contains(plot)) {
        m_watched.insert(plot);
        QObject *ears = m_ears.get();
        connect(plot, &AbstractPlot::plotDataChanged, ears, [this, plot] { followData(plot); });
        connect(plot, &AbstractPlot::axisXChanged, ears, [this] { wireLater(); });
        connect(plot, &AbstractPlot::axisYChanged, ears, [this] { wireLater(); });
        connect(plot, &QQuickItem::visibleChanged, ears, [this] { updateRangesLater(); });
        if (auto *trace = qobject_cast<Trace *>(plot)) {
            connect(trace, &Trace::styleChanged, ears, [this] { updateRangesLater(); });
            connect(trace, &Trace::nameChanged, ears, [this] { updateRangesLater(); });
            connect(trace, &Trace::colorChanged, ears, [this] { updateRangesLater(); });
        }
        if (auto *waterfall = qobject_cast<WaterfallPlot *>(plot)) {
            connect(waterfall, &WaterfallPlot::rowsChanged, ears, [this] { updateRangesLater(); });
            connect(waterfall, &WaterfallPlot::rowIntervalChanged, ears, [this] { updateRangesLater(); });
            connect(waterfall, &WaterfallPlot::directionChanged, ears, [this] { updateRangesLater(); });
        }
        connect(plot, &QObject::destroyed, ears, [this, plot] { dropPlot(plot); });
        drawAsImage(plot);
    }
    followData(plot);
    if (!plot->axisX()) {
        tellOfRefusedAxis(plot, plot->refusedAxisX(), "axisX", "vertical", "axisY", "Qt.AlignBottom");
        plot->setAxisX(m_axisX);
    }
    if (!plot->axisY()) {
        tellOfRefusedAxis(plot, plot->refusedAxisY(), "axisY", "horizontal", "axisX",
                          "Qt.AlignLeft or Qt.AlignRight");
        plot->setAxisY(m_axisY);
    }
}

// The plot may be no more than its address.
void ChartView::dropPlot(AbstractPlot *plot)
{
    m_watched.remove(plot);
    m_traceColors.forget(plot);
    if (plots().contains(plot)) {
        removePlot(plot);
        disconnect(plot, nullptr, m_ears.get(), nullptr);
        handlePlotVisibilityChanged();
    }
    wireLater();
}

void ChartView::followData(AbstractPlot *plot)
{
    const PlotData *data = plot->plotData();
    if (data && !m_watched.contains(data)) {
        m_watched.insert(data);
        connect(data, &PlotData::plotChanged, m_ears.get(), [this] { updateRangesLater(); });
        connect(data, &QObject::destroyed, m_ears.get(), [this, data] {
            m_watched.remove(data);
            updateRangesLater();
        });
    }
    updateRangesLater();
}

// Plots and cursors that go through a framebuffer are one pixel off with the software renderer.
void ChartView::drawAsImage(QQuickItem *item)
{
    auto *painted = qobject_cast<QQuickPaintedItem *>(item);
    if (painted && QQuickWindow::sceneGraphBackend() == QLatin1String("software"))
        painted->setRenderTarget(QQuickPaintedItem::Image);
}

// The axes that the document declares in the chart or in its plots, and those that the plots bring along.
void ChartView::gatherAxes()
{
    const QObjectList objects = QObject::children();
    for (QObject *object : objects) {
        if (auto *axis = qobject_cast<ValueAxis *>(object))
            adoptAxis(axis, true);
    }
    const auto taken = plots();
    for (const AbstractPlot *plot : taken) {
        const auto declared = plot->findChildren<ValueAxis *>(QString(), Qt::FindDirectChildrenOnly);
        for (ValueAxis *axis : declared)
            adoptAxis(axis, true);
        if (plot->axisX())
            adoptAxis(plot->axisX(), false);
        if (plot->axisY())
            adoptAxis(plot->axisY(), false);
    }
    m_axes.erase(
        std::remove_if(m_axes.begin(), m_axes.end(), [](const FittedAxis &fitted) { return !fitted.axis(); }),
        m_axes.end());
    QList<ValueAxis *> standing;
    for (const FittedAxis &fitted : m_axes) {
        if (fitted.isOwn())
            standing.append(fitted.axis());
    }
    m_grid->setStandingAxes(standing);
    m_labels->setStandingAxes(standing);
}

void ChartView::adoptAxis(ValueAxis *axis, bool isOwn)
{
    if (stateOf(axis))
        return;
    m_axes.emplace_back(axis, isOwn);
    if (!axis->labelsPlane())
        axis->setLabelsPlane(m_labels);
    if (!axis->linesPlane()) {
        axis->setLinesPlane(m_grid);
        // The grid is that of the first axes: a second one between its lines could not be read.
        if (axis != m_axisX && axis != m_axisY)
            axis->setLineStyle(Qt::NoPen);
    }
    QObject *ears = m_ears.get();
    if (auto *chartAxis = qobject_cast<ChartAxis *>(axis)) {
        chartAxis->setRoomBeyond(labelRoom);
        connect(chartAxis, &ChartAxis::titleChanged, ears, [this] { makeRoom(); });
    } else if (axis->margin() == 0) {
        const auto follow = [axis] { axis->setMargin(axis->requiredMargin() + labelRoom); };
        connect(axis, &ValueAxis::requiredMarginChanged, ears, follow);
        follow();
    }
    const auto take = [this, axis] {
        FittedAxis *fitted = stateOf(axis);
        if (m_applying || !fitted)
            return;
        fitted->takeRange();
        updateRangesLater();
    };
    connect(axis, &ValueAxis::minValueChanged, ears, take);
    connect(axis, &ValueAxis::maxValueChanged, ears, take);
    connect(axis, &QObject::destroyed, ears, [this] { wireLater(); });
    connect(axis, &ValueAxis::unitChanged, ears, [this] { makeRoom(); });
    connect(axis, &ValueAxis::visibleChanged, ears, [this] { makeRoom(); });
    axis->setZoomRect(zoomRect());
    if (m_colors)
        applyColors(axis);
}

FittedAxis *ChartView::stateOf(const ValueAxis *axis)
{
    const auto fitted = std::find_if(m_axes.begin(), m_axes.end(),
                                     [axis](const FittedAxis &other) { return other.axis() == axis; });
    return fitted == m_axes.end() ? nullptr : &*fitted;
}

void ChartView::dressCursors()
{
    const QList<QQuickItem *> children = childItems();
    for (QQuickItem *child : children) {
        if (auto *cursor = qobject_cast<GraphCursor *>(child)) {
            const auto text = [this, cursor](double distance) {
                return distanceText(cursor->followedAxis(), distance);
            };
            cursor->setLook(CursorLook{m_colors->cursorColor(), m_colors->font(), m_colors->colorsOfMarkers(),
                                       m_colors->textColor(), text});
        }
    }
}

// Those that came before the data: their texts would name a place where they are not.
void ChartView::placeCursors()
{
    const QList<QQuickItem *> children = childItems();
    for (QQuickItem *child : children) {
        auto *cursor = qobject_cast<GraphCursor *>(child);
        if (cursor && (cursor->posIndex() < 0 || cursor->awaitedValue()))
            cursor->setPosValue(cursor->awaitedValue().value_or(cursor->posValue()));
    }
}

} // namespace graph
