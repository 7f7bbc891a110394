#include "cursors/GraphCursor.h"

#include "axis/ValueAxis.h"
#include "common/SafeInteger.h"
#include "common/SceneExit.h"
#include "cursors/CursorPainting.h"
#include "cursors/GraphCursorAttached.h"
#include "cursors/GraphMarker.h"
#include "cursors/NearestSample.h"
#include "data/PlotData.h"
#include "view/base/AbstractPlot.h"
#include "view/zoom/ZoomRect.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

/*!
    \qmltype GraphCursor
    \inqmlmodule graph_plugin
    \brief A vertical line over the plots of a GraphView that snaps to the samples of the primary plot.

    The position has four forms: posIndex (sample), posValue (data value), position (fraction of the axis) and
    posOnScreen (pixel column). Writing one of them moves the cursor to the nearest sample and updates all: beyond
    the data that is the first or the last one. A NaN is ignored, and so is an index that no sample has.

    Direct child items, also those that are added later, read the values of one plot through the attached properties:

    \code
    GraphCursor {
        Text {
            GraphCursor.plot: trace
            text: GraphCursor.formattedYValue
            x: GraphCursor.xPosOnScreen
            y: GraphCursor.yPosOnScreen
        }
    }
    \endcode

    \qmlproperty int GraphCursor::primaryPlotIndex
    \readonly
    The place of the chosen primary plot in plots; -1 before a choice and for a plot that is not there.

    \qmlsignal GraphCursor::plotValuesChanged()
    The values of the plots at the cursor have been read anew, because the cursor moved or their data changed.
*/
GraphCursor::GraphCursor(QQuickItem *parent)
    : QQuickPaintedItem(parent)
{
    setFlag(ItemHasContents);
    setRenderTarget(FramebufferObject);
    setOpaquePainting(false);
    setAntialiasing(false);
    setVisible(false);
    m_moveTimer.start();
    // A parent given here was announced before this class could hear of it.
    if (parent)
        adoptZoomRectOf(parent);
}

GraphCursor::~GraphCursor()
{
    graph::leaveScene(this);
}

GraphCursorAttached *GraphCursor::qmlAttachedProperties(QObject *object)
{
    return new GraphCursorAttached(object);
}

void GraphCursor::componentComplete()
{
    QQuickPaintedItem::componentComplete();
    const QList<QQuickItem *> children = childItems();
    for (QQuickItem *child : children)
        giveReadingTo(child);
}

void GraphCursor::giveReadingTo(QQuickItem *child)
{
    auto *attached = qobject_cast<GraphCursorAttached *>(qmlAttachedPropertiesObject<GraphCursor>(child));
    if (attached)
        attached->setCursor(this);
}

/*!
    \qmlproperty double GraphCursor::position
    The place of the cursor's sample between the ends of the axis, 0 to 1. Writing needs the zoom rectangle of
    a GraphView and takes the fraction of the whole extent.
*/
void GraphCursor::setPosition(double position)
{
    if (m_followsX)
        setPositionOX(position);
    else
        setPositionOY(position);
}

void GraphCursor::setPositionOX(double position)
{
    if (AbstractPlot *plot = primaryPlot(); plot && m_zoomRect)
        setPosValue(plot->mapFromItemX(m_zoomRect->mapToItemX(position)));
}

void GraphCursor::setPositionOY(double position)
{
    if (AbstractPlot *plot = primaryPlot(); plot && m_zoomRect)
        setPosValue(plot->mapFromItemY(m_zoomRect->mapToItemY(position)));
}

/*!
    \qmlproperty double GraphCursor::posValue
    The data value of the cursor's sample, in the unit of the axis; 0 by default.
*/
void GraphCursor::setPosValue(double value)
{
    if (std::isnan(value))
        return;
    if (m_followsX)
        setPosValueOX(value);
    else
        setPosValueOY(value);
}

void GraphCursor::setPosValueOX(double value)
{
    if (!m_autoPrimaryPlot) {
        placeAtValue(value);
        return;
    }
    // The plot whose data is there; failing that, the first active one.
    const auto plots = m_plots;
    for (bool mustContain : {true, false}) {
        for (AbstractPlot *plot : plots) {
            PlotData *data = plot ? plot->plotData() : nullptr;
            if (!data || !data->active() || (mustContain && !data->containsPoint(value)))
                continue;
            const bool onNewAxis = makePrimary(plot);
            placeAtValue(value);
            if (onNewAxis)
                placeMarkers();
            return;
        }
    }
}

void GraphCursor::setPosValueOY(double value)
{
    placeAtValue(value);
}

// On the primary plot as it is, without choosing another one.
void GraphCursor::placeAtValue(double value)
{
    const PlotData *data = primarySeries();
    if (!data)
        return;
    if (!m_followsX) {
        setPosIndex(value);
        return;
    }
    const int index = graph::nearestSample(*data, value);
    if (index >= 0 && !std::isnan(data->x(index)))
        setPosIndex(index);
}

/*!
    \qmlproperty int GraphCursor::posIndex
    The index of the cursor's sample in the primary plot's data, -1 until it is placed.
*/
void GraphCursor::setPosIndex(double index)
{
    if (std::isnan(index))
        return;
    if (m_followsX)
        setPosIndexOX(graph::truncatedIndex(index));
    else
        setPosIndexOY(index);
}

void GraphCursor::setPosIndexOX(int index)
{
    PlotData *data = primarySeries();
    if (!data || !m_axis)
        return;
    const bool exists = graph::hasSample(*data, index);
    if (m_staysOnScreen) {
        // A series that runs backwards has the end of the screen first.
        const auto visible =
            std::minmax({data->indexOf(m_axis->minVisible()), data->indexOf(m_axis->maxVisible())});
        index = std::max(std::min(index, visible.second), visible.first);
        // The screen may show no sample at all.
        if (exists)
            index = std::max(std::min(index, data->size() - 1), 0);
    }
    if (!graph::hasSample(*data, index))
        return;
    const double value = data->x(index);
    const bool elsewhere = m_placedData != data || m_placedAxis != m_axis;
    if (index != m_posIndex || (elsewhere && (value != m_posValue || fractionOf(value) != m_position)))
        publishPosition(index, value);
    placeOnScreen();
}

// A horizontal cursor has no sample of its own: the value counts as the index.
void GraphCursor::setPosIndexOY(double value)
{
    PlotData *data = primarySeries();
    if (!data || !m_axis)
        return;
    int index = graph::truncatedIndex(value);
    if (m_staysOnScreen) {
        index = std::min(index, graph::truncatedIndex(m_axis->maxVisible()));
        index = std::max(index, graph::truncatedIndex(m_axis->minVisible()));
    }
    if (m_staysOnScreen || std::isinf(value))
        value = index;
    const bool elsewhere = m_placedAxis != m_axis && fractionOf(value) != m_position;
    if (index < data->size() && (m_posIndex != value || elsewhere))
        publishPosition(index, value);
    placeOnScreen();
}

double GraphCursor::fractionOf(double value) const
{
    return (value - m_axis->minValue()) / (m_axis->maxValue() - m_axis->minValue());
}

void GraphCursor::publishPosition(int index, double value)
{
    m_posIndex = index;
    m_posValue = value;
    m_position = fractionOf(value);
    m_placedData = primarySeries();
    m_placedAxis = m_axis;
    handlePlotValuesChanged();
    emit posIndexChanged();
    emit posValueChanged();
    emit positionChanged();
}

void GraphCursor::placeOnScreen()
{
    const AbstractPlot *plot = primaryPlot();
    // Those who heard of the new position may have replaced the data, and data can shrink below the cursor.
    const PlotData *data = primarySeries();
    if (!data || (m_followsX && !graph::hasSample(*data, m_posIndex)))
        return;
    const double coordinate =
        m_followsX ? plot->mapToItemX(data->x(m_posIndex)) : plot->mapToItemY(m_posValue);
    const int extent = graph::pixel(m_followsX ? width() : height());
    const int place = std::max(std::min(graph::pixel(coordinate), extent - 1), 0);
    if (place == m_posOnScreen)
        return;
    m_posOnScreen = place;
    emit posOnScreenChanged(place);
    update();
}

/*!
    \qmlproperty int GraphCursor::posOnScreen
    The pixel column of the line in the item, 0 by default. Reads back the column of the sample nearest to
    what was written.
*/
void GraphCursor::setPosOnScreen(int pixel)
{
    if (m_followsX)
        setPosOnScreenOX(pixel);
    else
        setPosOnScreenOY(pixel);
}

void GraphCursor::setPosOnScreenOX(int pixel)
{
    if (AbstractPlot *plot = primaryPlot())
        setPosValue(plot->mapFromItemX(pixel));
}

void GraphCursor::setPosOnScreenOY(int pixel)
{
    if (AbstractPlot *plot = primaryPlot())
        setPosValue(plot->mapFromItemY(pixel));
}

/*!
    \qmlproperty int GraphCursor::panMargin
    How near the edge of the item, in pixels, a key move pans the view; 48 by default.
    Without a notify signal.
*/
void GraphCursor::setPanMargin(int margin)
{
    m_panMargin = margin;
}

/*!
    \qmlproperty font GraphCursor::font
    The font of the distances to the markers, that of the application by default. Takes effect with the next repaint.
*/
void GraphCursor::setFont(QFont font)
{
    if (m_font == font)
        return;
    m_font = font;
    emit fontChanged();
}

/*!
    \qmlproperty AbstractPlot GraphCursor::primaryPlot
    The plot whose samples the cursor stands on, and whose axis it follows. Without a choice, null included, it is the
    first of plots. If the new plot has another axis, cursor and markers keep their values and are placed on that axis.
*/
void GraphCursor::setPrimaryPlot(AbstractPlot *plot)
{
    if (!makePrimary(plot))
        return;
    placeAtValue(m_posValue);
    placeMarkers();
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
    return followPrimaryPlot();
}

/*!
    \qmlproperty bool GraphCursor::staysOnScreen
    Keeps the cursor on the visible samples, true by default. Takes effect with the next move or zoom; a change is not
    announced.
*/
void GraphCursor::setStaysOnScreen(bool staysOnScreen)
{
    m_staysOnScreen = staysOnScreen;
}

/*!
    \qmlproperty bool GraphCursor::visible
    Whether the line and the markers are drawn. False until the view has found a primary plot; without a
    notify signal.
*/
void GraphCursor::setVisible(bool visible)
{
    m_visible = visible;
    update();
}

/*!
    \qmlproperty color GraphCursor::color
    The colour of the line, red by default. Its alpha is the cursor's own: after a paint it reads 127, the
    glow's.
*/
void GraphCursor::setColor(QColor color)
{
    if (m_color == color)
        return;
    m_color = color;
    emit colorChanged();
    update();
}

/*!
    \qmlproperty bool GraphCursor::autoPrimaryPlot
    Makes the plot whose active data contains the written value the primary plot, else the first one with
    active data; false by default.
*/
void GraphCursor::setAutoPrimaryPlot(bool automatic)
{
    if (m_autoPrimaryPlot == automatic)
        return;
    m_autoPrimaryPlot = automatic;
    emit sgnAutoPrimaryPlotChanged();
}

/*!
    \qmlproperty int GraphCursor::paintedWidth
    The width of the line with its glow, in pixels; 3 by default.
*/
void GraphCursor::setPaintedWidth(int newWidth)
{
    if (m_paintedWidth == newWidth)
        return;
    m_paintedWidth = newWidth;
    emit sgnPaintedWidthChanged();
    update();
}

/*!
    \qmlmethod void GraphCursor::moveLeft(bool autoRepeat)
    Moves the cursor to the left for one key press, by at least one sample and the farther the quicker the
    presses follow one another; pans the view near its edge. \a autoRepeat tells a held key, false by default.
*/
void GraphCursor::moveLeft(bool autoRepeat)
{
    PlotData *data = primarySeries();
    if (!data || !m_zoomRect)
        return;
    const int place = moveOnScreen(*data, -1, autoRepeat);
    if (place < m_panMargin && m_zoomRect)
        m_zoomRect->moveLeft(m_zoomRect->mapFromItemX(double(place) - m_panMargin));
}

/*!
    \qmlmethod void GraphCursor::moveRight(bool autoRepeat)
    The same to the right.
*/
void GraphCursor::moveRight(bool autoRepeat)
{
    PlotData *data = primarySeries();
    if (!data || !m_zoomRect)
        return;
    const int place = moveOnScreen(*data, 1, autoRepeat);
    if (width() - m_panMargin < place && m_zoomRect)
        m_zoomRect->moveRight(m_zoomRect->mapFromItemX(double(place) + m_panMargin));
}

// One step of a key to the left (-1) or to the right (1); the pixel that was asked for, or that of the next sample where
// the step is too short for one.
int GraphCursor::moveOnScreen(const PlotData &data, int direction, bool autoRepeat)
{
    const int step = m_acceleration.step(direction < 0, autoRepeat, m_moveTimer.elapsed());
    const int place = m_posOnScreen + direction * step;
    const int index = graph::nearestSample(data, primaryPlot()->mapFromItemX(place));
    if (index != m_posIndex) {
        setPosOnScreen(place);
        return place;
    }
    const bool backwards = data.x(data.size() - 1) < data.x(0);
    const int next = index + (backwards ? -direction : direction);
    if (!graph::hasSample(data, next))
        return place;
    setPosIndex(next);
    return m_posOnScreen;
}

void GraphCursor::geometryChanged(const QRectF &newGeometry, const QRectF &oldGeometry)
{
    QQuickPaintedItem::geometryChanged(newGeometry, oldGeometry);
    if (newGeometry.width() > 0.0 && newGeometry.height() > 0.0 && newGeometry.width() != oldGeometry.width()) {
        const PlotData *data = primarySeries();
        if (data && (!m_followsX || graph::hasSample(*data, m_posIndex)))
            setPosIndex(m_posIndex);
    } else if (newGeometry.height() != oldGeometry.height()) {
        handlePlotSizeChanged();
    }
}

void GraphCursor::paint(QPainter *painter)
{
    if (!m_zoomRect || !m_visible)
        return;
    if (renderTarget() != Image)
        painter->translate(1.0, 1.0);
    painter->setFont(m_font);
    if (m_followsX)
        paintMarkers(painter);
    paintBand(painter);
}

void GraphCursor::paintMarkers(QPainter *painter)
{
    for (const GraphMarker *marker : qAsConst(m_markers)) {
        if (marker && marker->isVisible())
            paintMarker(painter, marker);
    }
}

void GraphCursor::paintMarker(QPainter *painter, const GraphMarker *marker)
{
    const int column = marker->posOnScreen();
    QColor glow = marker->color();
    glow.setAlpha(127);
    painter->setPen(glow);
    drawLines(painter, column + 2, column + 2);
    drawLines(painter, column - 2, column - 2);
    glow.setAlpha(191);
    painter->setPen(glow);
    drawLines(painter, column - 1, column - 1);
    drawLines(painter, column + 1, column + 1);
    painter->setPen(marker->color());
    drawLines(painter, column, column);
    if (!primarySeries() || !marker->showDelta())
        return;
    const QString text = marker->formattedDeltaX();
    const int textWidth = painter->fontMetrics().boundingRect(text).width() - 1;
    painter->drawText(graph::deltaTextX(m_posOnScreen, column, textWidth, width()), marker->deltaY(), text);
}

void GraphCursor::paintBand(QPainter *painter)
{
    const graph::CursorBand band = graph::cursorBand(m_posOnScreen, m_paintedWidth);
    m_color.setAlpha(255);
    painter->setPen(m_color);
    drawLines(painter, band.core.first, band.core.last);
    // The property keeps the alpha of the glow; documents see it there.
    m_color.setAlpha(127);
    painter->setPen(m_color);
    drawLines(painter, band.glowBefore.first, band.glowBefore.last);
    drawLines(painter, band.glowBehind.first, band.glowBehind.last);
}

// One line per column over the whole height, or per row over the whole width.
void GraphCursor::drawLines(QPainter *painter, int first, int last) const
{
    const int length = graph::pixel((m_followsX ? height() : width()) - 1.0);
    const int extent = graph::pixel(m_followsX ? width() : height());
    // A band far wider than the item must not cost more than the item.
    const int end = std::min(last, extent);
    for (int place = std::max(first, -1); place <= end; ++place) {
        if (m_followsX)
            painter->drawLine(place, 0, place, length);
        else
            painter->drawLine(0, place, length, place);
    }
}
