// The part of the cursor that follows the plots, axes, data, markers and the zoom rectangle of its view.

#include "axis/ValueAxis.h"
#include "cursors/GraphCursor.h"
#include "cursors/GraphMarker.h"
#include "cursors/NearestSample.h"
#include "data/PlotData.h"
#include "view/base/AbstractPlot.h"
#include "view/zoom/ZoomRect.h"

#include <QDebug>

#include <algorithm>
#include <cmath>

namespace {

// Puts `entry` in the place of entry `index` of a list whose objects are connected once each to `receiver`,
// however often they occur. The old one's connections to `oldSlot` end, all of them for null.
template <typename T>
void replaceEntry(QVector<QPointer<T>> &list, int index, T *entry, const QObject *receiver,
                  const char *signal, const char *slot, const char *oldSlot)
{
    // Plots that a document appended to the list have no entries here.
    if (index >= list.size())
        return;
    const QPointer<T> old = list.at(index);
    if (old && list.count(old) == 1)
        QObject::disconnect(old, nullptr, receiver, oldSlot);
    const bool connected = list.contains(entry);
    list[index] = entry;
    if (entry && !connected)
        QObject::connect(entry, signal, receiver, slot);
}

} // namespace

// The functions behind the list properties.
struct GraphCursor::ListFunctions
{
    template <typename T> using List = QVector<QPointer<T>> GraphCursor::*;
    using Signal = void (GraphCursor::*)();

    static GraphCursor *cursor(QObject *object) { return static_cast<GraphCursor *>(object); }

    static void appendPlot(QQmlListProperty<AbstractPlot> *property, AbstractPlot *plot)
    {
        cursor(property->object)->m_plots.append(plot);
        emit cursor(property->object)->plotsChanged();
    }

    static void appendMarker(QQmlListProperty<GraphMarker> *property, GraphMarker *marker)
    {
        if (!marker)
            return;
        marker->setCursor(cursor(property->object));
        cursor(property->object)->m_markers.append(marker);
        emit cursor(property->object)->markersChanged();
    }

    template <typename T, List<T> list> static int count(QQmlListProperty<T> *property)
    {
        return (cursor(property->object)->*list).size();
    }

    template <typename T, List<T> list> static T *at(QQmlListProperty<T> *property, int index)
    {
        return (cursor(property->object)->*list).value(index);
    }

    template <typename T, List<T> list, Signal changed> static void clear(QQmlListProperty<T> *property)
    {
        (cursor(property->object)->*list).clear();
        emit(cursor(property->object)->*changed)();
    }
};

/*!
    \qmlproperty list<AbstractPlot> GraphCursor::plots
    \readonly
    The visible plots of the view, which the view keeps up to date. A plot that a document appends is listed
    but not followed.
*/
QQmlListProperty<AbstractPlot> GraphCursor::plots()
{
    using F = ListFunctions;
    return {this,
            nullptr,
            F::appendPlot,
            F::count<AbstractPlot, &GraphCursor::m_plots>,
            F::at<AbstractPlot, &GraphCursor::m_plots>,
            F::clear<AbstractPlot, &GraphCursor::m_plots, &GraphCursor::plotsChanged>};
}

/*!
    \qmlproperty list<PlotData> GraphCursor::series
    \readonly
    The data of the plots, entry i being that of plot i; null for a plot without data.
*/
QQmlListProperty<PlotData> GraphCursor::series()
{
    using F = ListFunctions;
    return {this, nullptr, F::count<PlotData, &GraphCursor::m_series>,
            F::at<PlotData, &GraphCursor::m_series>};
}

/*!
    \qmlproperty list<GraphMarker> GraphCursor::markers
    The markers that the cursor draws and shows its distance to.
*/
QQmlListProperty<GraphMarker> GraphCursor::markers()
{
    using F = ListFunctions;
    return {this,
            nullptr,
            F::appendMarker,
            F::count<GraphMarker, &GraphCursor::m_markers>,
            F::at<GraphMarker, &GraphCursor::m_markers>,
            F::clear<GraphMarker, &GraphCursor::m_markers, &GraphCursor::markersChanged>};
}

AbstractPlot *GraphCursor::primaryPlot() const
{
    if (m_primaryPlot)
        return m_primaryPlot;
    const auto first = std::find_if(m_plots.begin(), m_plots.end(), [](AbstractPlot *plot) { return plot; });
    return first == m_plots.end() ? nullptr : first->data();
}

PlotData *GraphCursor::primarySeries() const
{
    const AbstractPlot *plot = primaryPlot();
    return plot ? plot->plotData() : nullptr;
}

ValueAxis *GraphCursor::followedAxis() const
{
    return m_axis;
}

/*!
    \qmlmethod int GraphCursor::indexOfPlot(AbstractPlot plot)
    The place of \a plot in plots, -1 if it is not there.
*/
int GraphCursor::indexOfPlot(AbstractPlot *plot) const
{
    return plot ? m_plots.indexOf(plot) : -1;
}

void GraphCursor::setPlots(const QList<AbstractPlot *> &plots)
{
    if (std::equal(plots.begin(), plots.end(), m_plots.begin(), m_plots.end()))
        return;
    releasePlots();
    for (AbstractPlot *plot : plots) {
        if (plot)
            adoptPlot(plot);
    }
    if (!primaryPlot())
        setVisible(false);
    followPrimaryPlot();
    updateCursorPos();
    if (primaryPlot())
        setVisible(true);
    handlePlotValuesChanged();
    emit plotsChanged();
    emit seriesChanged();
}

void GraphCursor::releasePlots()
{
    for (AbstractPlot *plot : qAsConst(m_plots)) {
        if (plot)
            disconnect(plot, nullptr, this, nullptr);
    }
    for (PlotData *data : qAsConst(m_series)) {
        if (data)
            disconnect(data, nullptr, this, nullptr);
    }
    for (ValueAxis *axis : qAsConst(m_yAxes)) {
        // Only this signal: a horizontal cursor follows one of these axes as its own, too.
        if (axis)
            disconnect(axis, SIGNAL(visibleRangeChanged()), this, SLOT(handlePlotValuesChanged()));
    }
    m_plots.clear();
    m_series.clear();
    m_yAxes.clear();
}

// Data and axes may be shared by plots: they are heard once.
void GraphCursor::adoptPlot(AbstractPlot *plot)
{
    PlotData *data = plot->plotData();
    m_series.append(data);
    if (data) {
        connect(data, SIGNAL(plotChanged()), this, SLOT(handlePlotValuesChanged()), Qt::UniqueConnection);
        connect(data, SIGNAL(sgnActiveChanged()), this, SLOT(handlePlotActiveChanged()),
                Qt::UniqueConnection);
    }
    ValueAxis *axis = plot->axisY();
    m_yAxes.append(axis);
    if (axis)
        connect(axis, SIGNAL(visibleRangeChanged()), this, SLOT(handlePlotValuesChanged()),
                Qt::UniqueConnection);
    m_plots.append(plot);
    connect(plot, SIGNAL(plotDataChanged(PlotData *)), this, SLOT(handlePlotDataChanged(PlotData *)),
            Qt::UniqueConnection);
    connect(plot, SIGNAL(axisYChanged(ValueAxis *)), this, SLOT(handleYAxesChanged(ValueAxis *)),
            Qt::UniqueConnection);
    connect(plot, SIGNAL(widthChanged()), this, SLOT(handlePlotSizeChanged()), Qt::UniqueConnection);
    connect(plot, SIGNAL(heightChanged()), this, SLOT(handlePlotSizeChanged()), Qt::UniqueConnection);
}

// The axis that places the cursor is that of the primary plot; the axes of other plots do not move it. True if it is
// another one than before.
bool GraphCursor::followPrimaryPlot()
{
    AbstractPlot *plot = primaryPlot();
    const char *axisChanged =
        m_followsX ? SIGNAL(axisXChanged(ValueAxis *)) : SIGNAL(axisYChanged(ValueAxis *));
    if (m_followedPlot && m_followedPlot != plot) {
        disconnect(m_followedPlot, axisChanged, this, SLOT(handleXAxisChanged(ValueAxis *)));
        disconnect(m_followedPlot, &QObject::destroyed, this, &GraphCursor::handlePrimaryPlotDestroyed);
    }
    m_followedPlot = plot;
    if (!plot)
        return followAxis(nullptr);
    connect(plot, axisChanged, this, SLOT(handleXAxisChanged(ValueAxis *)), Qt::UniqueConnection);
    connect(plot, &QObject::destroyed, this, &GraphCursor::handlePrimaryPlotDestroyed, Qt::UniqueConnection);
    return followAxis(m_followsX ? plot->axisX() : plot->axisY());
}

bool GraphCursor::followAxis(ValueAxis *axis)
{
    if (m_axis == axis)
        return false;
    if (m_axis)
        disconnect(m_axis, SIGNAL(valueRangeChanged()), this, SLOT(updateCursorPos()));
    m_axis = axis;
    if (axis)
        connect(axis, SIGNAL(valueRangeChanged()), this, SLOT(updateCursorPos()));
    return true;
}

// The next plot takes its place without a word; the view tells later which plots are left.
void GraphCursor::handlePrimaryPlotDestroyed()
{
    if (followPrimaryPlot())
        updateCursorPos();
}

void GraphCursor::handleXAxisChanged(ValueAxis *axis)
{
    followAxis(axis);
    updateCursorPos();
}

// A horizontal cursor follows one of these axes; it hears of that one where it follows the primary plot.
void GraphCursor::handleYAxesChanged(ValueAxis *axis)
{
    const int index = senderPlotIndex();
    if (index < 0)
        return;
    const char *slot = SLOT(handlePlotValuesChanged());
    replaceEntry(m_yAxes, index, axis, this, SIGNAL(visibleRangeChanged()), slot, slot);
    handlePlotValuesChanged();
}

// Data that arrives here is not heard for its active flag, unlike the data that the plots bring with them.
void GraphCursor::handlePlotDataChanged(PlotData *data)
{
    const int index = senderPlotIndex();
    if (index < 0)
        return;
    replaceEntry(m_series, index, data, this, SIGNAL(plotChanged()), SLOT(handlePlotValuesChanged()),
                 nullptr);
    handlePlotValuesChanged();
    emit seriesChanged();
}

int GraphCursor::senderPlotIndex() const
{
    const int index = indexOfPlot(qobject_cast<AbstractPlot *>(sender()));
    if (index < 0)
        qDebug("        sender() not found!");
    return index;
}

/*!
    \qmlmethod void GraphCursor::handlePlotActiveChanged()
    \internal
    Answers a data object that has become active.
*/
void GraphCursor::handlePlotActiveChanged()
{
    auto *data = qobject_cast<PlotData *>(sender());
    if (!data || !data->active())
        return;
    const int index = m_series.indexOf(data);
    if (data->containsPoint(m_posValue) && index >= 0 && index < m_plots.size())
        setPrimaryPlot(m_plots.at(index));
}

/*!
    \qmlproperty list<real> GraphCursor::yValues
    \readonly
    The y value of every plot at the cursor, in the order of plots; 0 for a plot without data.
*/
/*!
    \qmlproperty list<string> GraphCursor::formattedYValues
    \readonly
    yValues as texts in the units of the data, "---" for a plot without data.
*/
/*!
    \qmlproperty list<real> GraphCursor::yPositions
    \readonly
    yValues in pixels of the plots, not rounded.
*/
void GraphCursor::handlePlotValuesChanged()
{
    QList<qreal> positions;
    QList<qreal> values;
    QStringList texts;
    for (const AbstractPlot *plot : qAsConst(m_plots)) {
        if (!plot)
            continue;
        const PlotData *data = plot->plotData();
        if (!data || data->size() < 1) {
            positions.append(0.0);
            values.append(0.0);
            texts.append(QStringLiteral("---"));
            continue;
        }
        const double y = data->y(graph::nearestSample(*data, m_posValue));
        positions.append(plot->mapToItemY(y));
        values.append(y);
        texts.append(data->formattedYValue(y));
    }
    if (m_yValues != values || m_formattedYValues != texts) {
        m_yValues = values;
        m_formattedYValues = texts;
        emit yValuesChanged();
    }
    if (m_yPositions != positions) {
        m_yPositions = positions;
        emit yPositionsChanged();
    }
    emit plotValuesChanged();
    const auto markers = m_markers;
    for (GraphMarker *marker : markers) {
        if (marker)
            marker->placeIfAwaited();
    }
}

bool GraphCursor::hasReading(int index) const
{
    const AbstractPlot *plot = m_plots.value(index);
    const PlotData *data = plot ? plot->plotData() : nullptr;
    return data && data->size() > 0 && !std::isnan(m_yPositions.value(index));
}

/*!
    \qmlmethod void GraphCursor::updateCursorPos()
    Puts the cursor and its markers back on their samples after the range of the axis changed; those that have never been
    placed come to the sample nearest to 0, markers to that of a posValue that they were given.
*/
void GraphCursor::updateCursorPos()
{
    setPosValue(m_posValue);
    placeMarkers();
}

void GraphCursor::placeMarkers()
{
    const auto markers = m_markers;
    for (GraphMarker *marker : markers) {
        if (marker)
            marker->placeAgain();
    }
}

void GraphCursor::handleRectChanged()
{
    setPosIndex(m_posIndex);
    const auto markers = m_markers;
    for (GraphMarker *marker : markers) {
        if (marker)
            marker->setPosIndex(marker->posIndex());
    }
}

// The samples stay, their pixels move; the plots may be given their size before the cursor or after it.
void GraphCursor::handlePlotSizeChanged()
{
    handlePlotValuesChanged();
    placeOnScreen();
    const auto markers = m_markers;
    for (GraphMarker *marker : markers) {
        // One without a sample would be hidden.
        const PlotData *data = primarySeries();
        if (marker && data && graph::hasSample(*data, marker->posIndex()))
            marker->setPosIndex(marker->posIndex());
    }
}

void GraphCursor::setZoomRect(ZoomRect *zoomRect)
{
    if (m_zoomRect == zoomRect)
        return;
    if (m_zoomRect)
        disconnect(m_zoomRect, nullptr, this, nullptr);
    m_zoomRect = zoomRect;
    if (zoomRect)
        connect(zoomRect, SIGNAL(rectChanged(QRectF)), this, SLOT(handleRectChanged()));
}

void GraphCursor::itemChange(ItemChange change, const ItemChangeData &data)
{
    if (change == ItemParentHasChanged && data.item)
        adoptZoomRectOf(data.item);
    // A document's own children are not ready before the cursor is.
    else if (change == ItemChildAddedChange && isComponentComplete())
        giveReadingTo(data.item);
    QQuickPaintedItem::itemChange(change, data);
}

void GraphCursor::adoptZoomRectOf(QQuickItem *parent)
{
    setZoomRect(parent->property("zoomRect").value<ZoomRect *>());
}
