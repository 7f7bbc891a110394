#include "view/frame/GraphView.h"

#include "axis/ValueAxis.h"
#include "common/QtVersion.h"
#include "common/SceneExit.h"
#include "cursors/GraphCursor.h"
#include "data/PlotData.h"
#include "view/base/AbstractPlot.h"
#include "view/base/XYScale.h"
#include "view/zoom/ZoomRect.h"

#include <QDebug>

#include <algorithm>

namespace {

QMargins widest(const QMargins &a, const QMargins &b)
{
    return {qMax(a.left(), b.left()), qMax(a.top(), b.top()), qMax(a.right(), b.right()),
            qMax(a.bottom(), b.bottom())};
}

} // namespace

// The functions behind a list property whose elements live in `list` and whose change is told by `changed`.
template <typename T> struct GraphView::ListFunctions
{
    using List = QVector<QPointer<T>> GraphView::*;
    using Signal = void (GraphView::*)();

    template <List list, Signal changed> static QQmlListProperty<T> property(GraphView *view)
    {
        return QQmlListProperty<T>(view, nullptr, append<list, changed>, count<list>, at<list>,
                                   clear<list, changed>);
    }

private:
    template <List list, Signal changed> static void append(QQmlListProperty<T> *property, T *element)
    {
        auto *view = static_cast<GraphView *>(property->object);
        (view->*list).append(element);
        emit(view->*changed)();
    }

    template <List list> static graph::ListIndex count(QQmlListProperty<T> *property)
    {
        return property->object ? (static_cast<GraphView *>(property->object)->*list).size() : 0;
    }

    template <List list> static T *at(QQmlListProperty<T> *property, graph::ListIndex index)
    {
        return (static_cast<GraphView *>(property->object)->*list).value(index);
    }

    template <List list, Signal changed> static void clear(QQmlListProperty<T> *property)
    {
        auto *view = static_cast<GraphView *>(property->object);
        (view->*list).clear();
        emit(view->*changed)();
    }
};

/*!
    \qmltype GraphView
    \inqmlmodule graph_plugin
    \brief The container of one chart: scales, plots, cursors and at most one Flickable are its children.

    Children are wired once, when the component is complete; children added later are not. The view deletes the plots
    it found. A Flickable among the children pans the chart, its content being the whole data extent.

    \code
    GraphView {
        axes: [
            ValueAxis { id: axisX; maxValue: 100 },
            ValueAxis { id: axisY; alignment: Qt.AlignLeft; maxValue: 10 }
        ]
        GraphPlot {
            plotStyle: GraphPlot.LinePlot
            plotData: PlotSeries { axisX: axisX; axisY: axisY; yData: [1, 5, 3] }
        }
    }
    \endcode
*/
GraphView::GraphView(QQuickItem *parent)
    : QQuickItem(parent)
    , m_contentItem(new QQuickItem(this))
    , m_zoomRect(new ZoomRect(m_contentItem))
{
    setFlag(ItemHasContents);
    setAntialiasing(false);
    connect(m_zoomRect, SIGNAL(rectChanged(QRectF)), this, SLOT(updateChildren()));
    connect(this, SIGNAL(visibleChanged()), this, SLOT(handlePlotVisibilityChanged()));
}

GraphView::~GraphView()
{
    for (AbstractPlot *plot : qAsConst(m_plots)) {
        if (plot)
            disconnect(plot, nullptr, this, nullptr);
    }
    // The plots of a Repeater go with it: deleted behind its back, they would leave in memory what it keeps of each.
    const QObjectList owned = QObject::children();
    for (QObject *child : owned) {
        if (child->inherits("QQuickRepeater"))
            delete child;
    }
    while (!m_plots.isEmpty())
        delete m_plots.takeFirst().data();
    graph::leaveScene(this);
}

/*!
    \qmlproperty ZoomRect GraphView::zoomRect
    \readonly
    The visible part of the data extent. Plots, cursors and, through the plots, axes follow it.
*/
ZoomRect *GraphView::zoomRect() const
{
    return m_zoomRect;
}

/*!
    \qmlproperty list<ValueAxis> GraphView::axes
    The value axes. An axis that names no planes of its own is drawn on the view's default scale, the scale with the
    highest \c z.
*/
QQmlListProperty<ValueAxis> GraphView::axes()
{
    return ListFunctions<ValueAxis>::property<&GraphView::m_axes, &GraphView::axesChanged>(this);
}

/*!
    \qmlproperty list<PlotData> GraphView::series
    A place to declare data objects; the view does nothing with them.
*/
QQmlListProperty<PlotData> GraphView::series()
{
    return ListFunctions<PlotData>::property<&GraphView::m_series, &GraphView::seriesChanged>(this);
}

QList<AbstractPlot *> GraphView::plots() const
{
    QList<AbstractPlot *> plots;
    for (AbstractPlot *plot : m_plots) {
        if (plot)
            plots.append(plot);
    }
    return plots;
}

bool GraphView::hasPlot(const AbstractPlot *plot) const
{
    return plot && std::find(m_plots.begin(), m_plots.end(), plot) != m_plots.end();
}

void GraphView::componentComplete()
{
    findScales();
    assignPlanes();
    const QList<QQuickItem *> children = childItems();
    for (QQuickItem *child : children)
        adoptChild(child);
    handlePlotVisibilityChanged();
    QQuickItem::componentComplete();
}

void GraphView::findScales()
{
    const QList<QQuickItem *> children = childItems();
    for (QQuickItem *child : children) {
        auto *scale = qobject_cast<XYScale *>(child);
        if (!scale)
            continue;
        m_scales.append(scale);
        if (!m_defaultScale || scale->z() > m_defaultScale->z())
            m_defaultScale = scale;
    }
    if (m_scales.isEmpty()) {
        m_defaultScale = new XYScale(this);
        m_defaultScale->setZ(100.0);
        m_scales.append(m_defaultScale);
        qWarning() << "componentComplete"
                   << " - no XYScale was defined in QML. Created default one:" << m_defaultScale.data();
    }
    for (XYScale *scale : qAsConst(m_scales)) {
        connect(scale, SIGNAL(marginsChanged(int, int, int, int)), this,
                SLOT(handleMarginsChanged(int, int, int, int)));
        connect(scale, SIGNAL(destroyed()), this, SLOT(handleMarginsChanged()));
    }
}

void GraphView::assignPlanes()
{
    if (m_axes.isEmpty())
        qWarning("No ValueAxis objects in axes property! ValuesAxis objects work correctly only when grouped "
                 "in axes[] "
                 "property of the GraphView.");
    const auto axes = m_axes;
    for (ValueAxis *axis : axes) {
        if (!axis)
            continue;
        if (!axis->labelsPlane()) {
            qWarning() << "componentComplete"
                       << " - selected default labelsPlane for axis which selected none:" << axis;
            axis->setLabelsPlane(m_defaultScale);
        }
        if (!axis->linesPlane()) {
            qWarning() << "componentComplete"
                       << " - selected default linesPlane for axis which selected none:" << axis;
            axis->setLinesPlane(m_defaultScale);
        }
    }
}

void GraphView::adoptChild(QQuickItem *child)
{
    if (child == m_contentItem) {
        m_isPlotAreaPlaced = true;
        placePlotArea(QSizeF(width(), height()));
        return;
    }
    stretch(child, m_scales.contains(qobject_cast<XYScale *>(child)) ? this : m_contentItem.data());
    if (auto *plot = qobject_cast<AbstractPlot *>(child)) {
        addPlot(plot);
    } else if (auto *cursor = qobject_cast<GraphCursor *>(child)) {
        addCursor(cursor);
    } else if (child->inherits("QQuickFlickable")) {
        if (m_zoomRect)
            m_zoomRect->setFlickable(child);
    }
}

void GraphView::stretch(QQuickItem *child, QQuickItem *over)
{
    // Readable only once the document's engine knows the type of the anchors.
    if (auto *anchors = child->property("anchors").value<QObject *>())
        anchors->setProperty("fill", QVariant::fromValue<QQuickItem *>(over));
}

// The scales and cursors hear of it with the next handlePlotVisibilityChanged().
void GraphView::addPlot(AbstractPlot *plot)
{
    m_plots.append(plot);
    connect(plot, SIGNAL(visibleChanged()), this, SLOT(handlePlotVisibilityChanged()));
    connect(plot, SIGNAL(destroyed()), this, SLOT(handlePlotVisibilityChanged()));
}

void GraphView::removePlot(AbstractPlot *plot)
{
    m_plots.removeAll(plot);
    disconnect(plot, nullptr, this, nullptr);
}

void GraphView::addCursor(GraphCursor *cursor)
{
    m_cursor = cursor;
    cursor->setZoomRect(m_zoomRect);
    cursor->setZ(m_defaultScale->z() + 1.0);
    m_cursors.append(cursor);
}

void GraphView::handlePlotVisibilityChanged()
{
    if (!isVisible())
        return;
    QList<AbstractPlot *> visiblePlots;
    for (AbstractPlot *plot : qAsConst(m_plots)) {
        if (plot && plot->isVisible())
            visiblePlots.append(plot);
    }
    for (XYScale *scale : qAsConst(m_scales)) {
        if (scale)
            scale->setPlots(visiblePlots);
    }
    visiblePlots.erase(std::remove_if(visiblePlots.begin(), visiblePlots.end(),
                                      [this](const AbstractPlot *plot) { return !isRead(*plot); }),
                       visiblePlots.end());
    if (m_cursor)
        m_cursor->setPlots(visiblePlots);
    for (GraphCursor *cursor : qAsConst(m_cursors)) {
        if (cursor)
            cursor->setPlots(visiblePlots);
    }
}

// The plot area is the same for all planes, so that lines, labels and traces meet whichever plane draws them:
// each side keeps clear of the widest margin there.
void GraphView::handleMarginsChanged(int left, int right, int top, int bottom)
{
    QMargins margins = widest(QMargins(left, top, right, bottom), reservedMargins());
    for (const XYScale *scale : qAsConst(m_scales)) {
        if (scale)
            margins = widest(margins, scale->margins());
    }
    for (XYScale *scale : qAsConst(m_scales)) {
        if (scale)
            scale->setPlotAreaMargins(margins);
    }
    m_margins = margins;
    placePlotArea(QSizeF(width(), height()));
}

// Not by anchors, the margins of which change sides where a document mirrors its layout: those of the axes do not.
void GraphView::placePlotArea(const QSizeF &size)
{
    if (!m_contentItem || !m_isPlotAreaPlaced)
        return;
    m_contentItem->setPosition(QPointF(m_margins.left(), m_margins.top()));
    // Where there is no room for it nothing is to be drawn beyond the view.
    m_contentItem->setSize(QSizeF(qMax(0.0, size.width() - m_margins.left() - m_margins.right()),
                                  qMax(0.0, size.height() - m_margins.top() - m_margins.bottom())));
}

void GraphView::GRAPH_GEOMETRY_CHANGED(const QRectF &now, const QRectF &before)
{
    if (now.size() != before.size())
        placePlotArea(now.size());
    QQuickItem::GRAPH_GEOMETRY_CHANGED(now, before);
}

void GraphView::updateChildren()
{
    const QList<QQuickItem *> children = childItems();
    for (QQuickItem *child : children) {
        if (child->inherits("QQuickPaintedItem"))
            child->update();
    }
}
