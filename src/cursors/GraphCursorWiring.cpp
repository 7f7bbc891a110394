// What the cursor has to do with the plots, the markers and the zoom rectangle of its view.

#include "axis/ValueAxis.h"
#include "common/QtVersion.h"
#include "cursors/CursorDirection.h"
#include "cursors/CursorPlaces.h"
#include "cursors/GraphCursor.h"
#include "cursors/GraphMarker.h"
#include "cursors/PeakSearch.h"
#include "data/PlotData.h"
#include "view/base/AbstractPlot.h"
#include "view/base/ParentZoom.h"
#include "view/zoom/ZoomRect.h"

#include <QCoreApplication>
#include <QEvent>

#include <cmath>
#include <utility>

namespace {

template <typename T> GraphCursor *cursorOf(QQmlListProperty<T> *list)
{
    return static_cast<GraphCursor *>(list->object);
}

QEvent::Type passEnd()
{
    static const int type = QEvent::registerEventType();
    return QEvent::Type(type);
}

} // namespace

/*!
    \qmlproperty list<AbstractPlot> GraphCursor::plots
    \readonly
    The visible plots of the view, which the view keeps up to date. A plot that a document appends is listed
    but not followed.
*/
QQmlListProperty<AbstractPlot> GraphCursor::plots()
{
    using List = QQmlListProperty<AbstractPlot>;
    const auto append = [](List *list, AbstractPlot *plot) {
        cursorOf(list)->m_plots.append(plot);
        emit cursorOf(list)->plotsChanged();
    };
    const auto count = [](List *list) -> graph::ListIndex { return cursorOf(list)->m_plots.count(); };
    const auto at = [](List *list, graph::ListIndex index) {
        return cursorOf(list)->m_plots.plot(int(index));
    };
    const auto clear = [](List *list) {
        cursorOf(list)->m_plots.replace({});
        emit cursorOf(list)->plotsChanged();
        emit cursorOf(list)->seriesChanged();
    };
    return {this, nullptr, append, count, at, clear};
}

/*!
    \qmlproperty list<PlotData> GraphCursor::series
    \readonly
    The data of the plots, entry i being that of plot i; null for a plot without data.
*/
QQmlListProperty<PlotData> GraphCursor::series()
{
    using List = QQmlListProperty<PlotData>;
    return {this, nullptr,
            [](List *list) -> graph::ListIndex { return cursorOf(list)->m_plots.seriesCount(); },
            [](List *list, graph::ListIndex index) { return cursorOf(list)->m_plots.series(int(index)); }};
}

/*!
    \qmlproperty list<GraphMarker> GraphCursor::markers
    The markers that the cursor draws and shows its distance to.
*/
QQmlListProperty<GraphMarker> GraphCursor::markers()
{
    using List = QQmlListProperty<GraphMarker>;
    const auto append = [](List *list, GraphMarker *marker) {
        if (!marker)
            return;
        cursorOf(list)->m_markers.append(marker, cursorOf(list));
        cursorOf(list)->colorMarkers();
        emit cursorOf(list)->markersChanged();
    };
    const auto count = [](List *list) -> graph::ListIndex { return cursorOf(list)->m_markers.count(); };
    const auto at = [](List *list, graph::ListIndex index) {
        return cursorOf(list)->m_markers.at(int(index));
    };
    const auto clear = [](List *list) {
        cursorOf(list)->m_markers.clear();
        emit cursorOf(list)->markersChanged();
    };
    return {this, nullptr, append, count, at, clear};
}

bool GraphCursor::isHorizontal() const
{
    return &m_direction == &graph::CursorDirection::alongY;
}

AbstractPlot *GraphCursor::primaryPlot() const
{
    return m_primaryPlot ? m_primaryPlot.data() : m_plots.first();
}

PlotData *GraphCursor::primarySeries() const
{
    const AbstractPlot *plot = primaryPlot();
    return plot ? plot->plotData() : nullptr;
}

ValueAxis *GraphCursor::followedAxis() const
{
    return m_axis.axis();
}

/*!
    \qmlmethod int GraphCursor::indexOfPlot(AbstractPlot plot)
    The place of \a plot in plots, -1 if it is not there.
*/
int GraphCursor::indexOfPlot(AbstractPlot *plot) const
{
    return m_plots.indexOf(plot);
}

void GraphCursor::setPlots(const QList<AbstractPlot *> &plots)
{
    if (m_plots.areExactly(plots))
        return;
    m_plots.replace(plots);
    if (!primaryPlot())
        setVisible(false);
    m_axis.followPlot(primaryPlot());
    updateCursorPos();
    if (primaryPlot())
        setVisible(true);
    readAll();
    emit plotsChanged();
    emit seriesChanged();
}

/*!
    \qmlproperty AbstractPlot GraphCursor::primaryPlot
    The plot whose samples the cursor is on, and whose axis it follows. Without a choice, null included, it is the
    first of plots. If the new plot has another axis, cursor and markers keep their values and are placed on that axis.
*/
void GraphCursor::setPrimaryPlot(AbstractPlot *plot)
{
    if (!makePrimary(plot))
        return;
    placeAt(places().ofValue(m_posValue));
    m_markers.placeAgain();
}

// True if the cursor has to be placed on another axis.
bool GraphCursor::makePrimary(AbstractPlot *plot)
{
    if (m_primaryPlot == plot)
        return false;
    m_primaryPlot = plot;
    emit primaryPlotChanged();
    const int index = indexOfPlot(m_primaryPlot);
    if (m_primaryPlotIndex != index) {
        m_primaryPlotIndex = index;
        emit sgnPrimaryPlotIndexChanged();
    }
    return m_axis.followPlot(primaryPlot());
}

// The next plot replaces it silently; the view announces later which plots are left.
void GraphCursor::handlePrimaryPlotDestroyed()
{
    if (m_axis.followPlot(primaryPlot()))
        updateCursorPos();
}

void GraphCursor::handleXAxisChanged(ValueAxis *axis)
{
    m_axis.followAxis(axis);
    updateCursorPos();
}

// A horizontal cursor follows one of these axes; it hears of that one where it follows the primary plot.
void GraphCursor::handleYAxesChanged(ValueAxis *axis)
{
    const int index = senderPlotIndex();
    if (index < 0)
        return;
    m_plots.replaceAxisY(index, axis);
    readAll();
}

void GraphCursor::handlePlotDataChanged(PlotData *data)
{
    const int index = senderPlotIndex();
    if (index < 0)
        return;
    m_plots.replaceSeries(index, data);
    readAll();
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
    const int index = m_plots.indexOfSeries(data);
    if (data->containsPoint(m_posValue) && index >= 0)
        setPrimaryPlot(m_plots.plot(int(index)));
}

// When data scroll, samples keep their x while their indices fall. When the cursor's own falls out, the cursor moves to
// the oldest one; markers whose sample falls out are hidden.
void GraphCursor::followSamples()
{
    followScroll();
    m_markers.followScroll();
}

void GraphCursor::followScroll()
{
    const PlotData *data = m_placedData == primarySeries() ? m_placedData.data() : nullptr;
    const qint64 scrolled = data ? data->history().scrolledSince(m_placedHistory) : 0;
    if (scrolled == 0 || data->size() < 1)
        return;
    const qint64 index = m_posIndex - scrolled;
    m_placedHistory = data->history();
    if (index >= 0) {
        m_posIndex = int(index);
        emit posIndexChanged();
    } else if (followedAxis()) {
        publish({0, data->x(0), data});
    }
}

// Many plots that change in one pass of the event loop, as when all get new data or another size, tell so one after the
// other. The first has all of them read; of those after it only what it may have changed is read again. A formatter may
// write differently at any time, so in the end all are compared once more.
void GraphCursor::handlePlotValuesChanged()
{
    constexpr int many = 8;
    followSamples();
    graph::PlotReadings readings = m_readings;
    if (m_isRead && m_plots.readAgain(sender(), m_posValue, &readings)) {
        announce(readings);
        return;
    }
    announce(m_plots.readingsAt(m_posValue));
    if (m_plots.count() > many && !std::exchange(m_isRead, true))
        QCoreApplication::postEvent(this, new QEvent(passEnd()), Qt::LowEventPriority);
}

void GraphCursor::readAll()
{
    followSamples();
    announce(m_plots.readingsAt(m_posValue));
}

bool GraphCursor::event(QEvent *event)
{
    if (event->type() != passEnd())
        return ShiftedItem::event(event);
    m_isRead = false;
    const graph::PlotReadings readings = m_plots.readingsAt(m_posValue);
    if (!(readings == m_readings))
        announce(readings);
    return true;
}

void GraphCursor::announce(const graph::PlotReadings &readings)
{
    if (m_readings.values != readings.values || m_readings.texts != readings.texts) {
        m_readings.values = readings.values;
        m_readings.texts = readings.texts;
        emit yValuesChanged();
    }
    if (m_readings.positions != readings.positions) {
        m_readings.positions = readings.positions;
        emit yPositionsChanged();
    }
    emit plotValuesChanged();
    m_markers.placeAwaited();
}

bool GraphCursor::hasReading(int index) const
{
    return m_plots.hasSamples(index) && !std::isnan(m_readings.positions.value(index));
}

/*!
    \qmlmethod void GraphCursor::updateCursorPos()
    Puts the cursor and its markers back on their samples after the range of the axis changed; those that have never been
    placed come to the sample nearest to 0, markers to that of a posValue that they were given.
*/
void GraphCursor::updateCursorPos()
{
    placeOnValue(m_posValue);
    m_markers.placeAgain();
}

void GraphCursor::handleRectChanged()
{
    followSamples();
    placeAgain();
    m_markers.placeOnSamples();
}

// The samples stay, their pixels move; the plots may be given their size before the cursor or after it.
void GraphCursor::handlePlotSizeChanged()
{
    handlePlotValuesChanged();
    placeOnScreen();
    m_markers.placeOnPresentSamples();
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
    if (change == ItemParentHasChanged)
        m_look.reset();
    if (change == ItemParentHasChanged && data.item)
        followZoomRectOf(data.item);
    // A document's own children are not ready before the cursor is.
    else if (change == ItemChildAddedChange && isComponentComplete())
        giveReadingTo(data.item);
    QQuickPaintedItem::itemChange(change, data);
}

void GraphCursor::followZoomRectOf(const QQuickItem *parent)
{
    // In a document the parent's binding may not have been evaluated when the cursor arrives.
    graph::followZoomRect(parent, this, "adoptZoomRectOfParent()");
    setZoomRect(graph::zoomRectOf(parent));
}

// The former parent may tell, too.
void GraphCursor::adoptZoomRectOfParent()
{
    if (parentItem())
        setZoomRect(graph::zoomRectOf(parentItem()));
}

void GraphCursor::setPeak()
{
    const PlotData *data = primarySeries();
    if (data && data->size() > 0)
        setPosIndex(graph::highestSample(*data));
}

void GraphCursor::setPeakLeft()
{
    setPeakBeside(PeakLeft);
}

void GraphCursor::setPeakRight()
{
    setPeakBeside(PeakRight);
}

void GraphCursor::setPeakBeside(PeakType type)
{
    if (const int index = findPeak(type); index != -1)
        setPosIndex(index);
}

int GraphCursor::findPeak(PeakType type) const
{
    const AbstractPlot *plot = primaryPlot();
    const PlotData *data = primarySeries();
    const ValueAxis *axis = followedAxis();
    const ValueAxis *yAxis = plot ? plot->axisY() : nullptr;
    if (!axis || !data || !yAxis || (type != PeakLeft && type != PeakRight))
        return -1;
    return graph::visiblePeak(type == PeakRight, *data, *axis, *yAxis, m_posIndex);
}

int GraphCursor::getNextPeak(bool right, const QVector<double> &y, int first, int last, double min,
                             double max) const
{
    return graph::nextPeak(right, y, first, last, m_posIndex, min, max);
}

double GraphCursor::computePeakTolerance(const QVector<double> &y, int first, int last, double min,
                                         double max) const
{
    return graph::peakTolerance(y, first, last, min, max);
}

bool GraphCursor::getMinMaxY(const QVector<double> &y, int first, int last, double &min, double &max) const
{
    return graph::findSpan(y, first, last, min, max);
}

int GraphCursor::getPositionIndex(double value, int count, double min, double max)
{
    return graph::evenlySpacedIndex(value, count, min, max);
}
