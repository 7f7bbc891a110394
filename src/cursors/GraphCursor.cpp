#include "cursors/GraphCursor.h"

#include "axis/ValueAxis.h"
#include "common/SafeInteger.h"
#include "common/SceneExit.h"
#include "cursors/CursorDirection.h"
#include "cursors/CursorPainting.h"
#include "cursors/CursorPlaces.h"
#include "cursors/GraphCursorAttached.h"
#include "cursors/GraphMarker.h"
#include "cursors/NearestSample.h"
#include "data/PlotData.h"
#include "view/base/AbstractPlot.h"
#include "view/base/StampNode.h"
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
    The values of the plots at the cursor have been read again, because the cursor moved or their data changed.
*/
GraphCursor::GraphCursor(QQuickItem *parent)
    : GraphCursor(graph::CursorDirection::alongX, parent)
{
}

GraphCursor::GraphCursor(const graph::CursorDirection &direction, QQuickItem *parent)
    : ShiftedItem(parent)
    , m_direction(direction)
    , m_axis(this, direction, [this] { handlePrimaryPlotDestroyed(); })
{
    setFlag(ItemHasContents);
    setRenderTarget(FramebufferObject);
    setOpaquePainting(false);
    setAntialiasing(false);
    setVisible(false);
    m_moveTimer.start();
    // A parent given here was announced before this class could hear of it.
    if (parent)
        followZoomRectOf(parent);
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
    const AbstractPlot *plot = primaryPlot();
    if (plot && m_zoomRect)
        setPosValue((plot->*m_direction.fromItem)((m_zoomRect->*m_direction.fractionToItem)(position)));
    m_writtenValue.reset();
}

/*!
    \qmlproperty double GraphCursor::posValue
    The data value of the cursor's sample, in the unit of the axis; 0 by default.
*/
void GraphCursor::setPosValue(double value)
{
    if (std::isnan(value))
        return;
    m_writtenValue = value;
    placeOnValue(value);
    m_awaitedValue = m_posIndex < 0 ? std::make_optional(value) : std::nullopt;
}

void GraphCursor::placeOnValue(double value)
{
    if (m_autoPrimaryPlot && m_direction.snapsToSamples)
        placeOnChosenPlot(value);
    else
        placeAt(places().ofValue(value));
}

// On the plot whose data is there; failing that, on the first active one.
void GraphCursor::placeOnChosenPlot(double value)
{
    const graph::TrackedPlots plots = m_plots;
    for (bool mustContain : {true, false}) {
        for (int i = 0; i < plots.count(); ++i) {
            AbstractPlot *plot = plots.plot(i);
            PlotData *data = plot ? plot->plotData() : nullptr;
            if (!data || !data->active() || (mustContain && !data->containsPoint(value)))
                continue;
            const bool onNewAxis = makePrimary(plot);
            placeAt(places().ofValue(value));
            if (onNewAxis)
                m_markers.placeAgain();
            return;
        }
    }
}

/*!
    \qmlproperty int GraphCursor::posIndex
    The index of the cursor's sample in the primary plot's data, -1 until it is placed.
*/
void GraphCursor::setPosIndex(double index)
{
    if (!std::isnan(index))
        placeAt(places().ofIndex(index));
}

// Where it is, after that has become another place on the screen.
void GraphCursor::placeAgain()
{
    setPosIndex(m_direction.snapsToSamples ? m_posIndex : m_posValue);
}

graph::CursorPlaces GraphCursor::places() const
{
    return {m_direction, primarySeries(), followedAxis(), m_staysOnScreen};
}

void GraphCursor::placeAt(const std::optional<graph::CursorPlace> &place)
{
    followScroll();
    // A horizontal line whose value does not count as an index any more still belongs where its value is.
    if (!place && (m_direction.snapsToSamples || !followedAxis()))
        return;
    if (place && isNew(*place))
        publish(*place);
    placeOnScreen();
}

// Of the same index may be another value of a level, a sample with another x or one of other data.
bool GraphCursor::isNew(const graph::CursorPlace &place) const
{
    const bool hasMoved = place.value != m_posValue && !std::isnan(place.value);
    const bool isElsewhere = m_placedAxis != followedAxis() || m_placedData != place.data;
    return place.index != m_posIndex || hasMoved || (isElsewhere && fractionOf(place.value) != m_position);
}

void GraphCursor::publish(const graph::CursorPlace &place)
{
    m_posIndex = place.index;
    m_posValue = place.value;
    m_position = fractionOf(place.value);
    m_placedData = place.data;
    m_placedHistory = place.data ? place.data->history() : graph::SampleHistory();
    m_placedAxis = followedAxis();
    readAll();
    emit posIndexChanged();
    emit posValueChanged();
    emit positionChanged();
}

double GraphCursor::fractionOf(double value) const
{
    return followedAxis()->axisRange().fullScale().fraction(value);
}

void GraphCursor::placeOnScreen()
{
    // Those who heard of the new position may have replaced the data, and data can shrink below the cursor.
    const std::optional<double> value = places().valueOf(m_posIndex, m_posValue);
    if (!value)
        return;
    const int last = graph::pixel((this->*m_direction.extent)()) - 1;
    const int place = std::max(std::min(graph::pixel((primaryPlot()->*m_direction.toItem)(*value)), last), 0);
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
    if (const AbstractPlot *plot = primaryPlot())
        setPosValue((plot->*m_direction.fromItem)(pixel));
    m_writtenValue.reset();
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
    m_hasOwnFont = true;
    if (m_font == font)
        return;
    m_font = font;
    emit fontChanged();
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
    notify signal. With Qt 6 this is the property of Item, which cannot be replaced there: items in the cursor
    are hidden with it.
*/
void GraphCursor::setVisible(bool visible)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    QQuickPaintedItem::setVisible(visible);
#else
    m_visible = visible;
#endif
    update();
}

bool GraphCursor::isCursorVisible() const
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    return isVisible();
#else
    return m_visible;
#endif
}

/*!
    \qmlproperty color GraphCursor::color
    The colour of the line, red by default. Its alpha is the cursor's own: after a paint it reads 127, the
    glow's.
*/
void GraphCursor::setColor(QColor color)
{
    m_hasOwnColor = true;
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
    m_hasOwnWidth = true;
    if (m_paintedWidth == newWidth)
        return;
    m_paintedWidth = newWidth;
    emit sgnPaintedWidthChanged();
    update();
}

void GraphCursor::setLook(const std::optional<graph::CursorLook> &look)
{
    m_look = look;
    if (!look)
        return;
    if (!m_hasOwnColor) {
        setColor(look->color);
        m_hasOwnColor = false;
    }
    if (!m_hasOwnFont) {
        setFont(look->font);
        m_hasOwnFont = false;
    }
    if (!m_hasOwnWidth) {
        setPaintedWidth(1);
        m_hasOwnWidth = false;
    }
    colorMarkers();
    update();
}

void GraphCursor::colorMarkers()
{
    if (m_look)
        m_markers.giveColors(m_look->markerColors);
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
    const graph::CursorPlaces samples = places();
    const int index = samples.nearestSample(primaryPlot()->mapFromItemX(place));
    if (index != m_posIndex) {
        if (index < 0 || m_autoPrimaryPlot || !m_direction.snapsToSamples)
            setPosOnScreen(place);
        else
            placeAt(samples.ofIndex(index));
        return place;
    }
    const bool falls = data.x(data.size() - 1) < data.x(0);
    const ValueAxis *axis = followedAxis();
    const bool backwards = falls != (axis && axis->isReversed());
    const int next = index + (backwards ? -direction : direction);
    if (!graph::hasSample(data, next))
        return place;
    setPosIndex(next);
    return m_posOnScreen;
}

void GraphCursor::GRAPH_GEOMETRY_CHANGED(const QRectF &newGeometry, const QRectF &oldGeometry)
{
    QQuickPaintedItem::GRAPH_GEOMETRY_CHANGED(newGeometry, oldGeometry);
    if (newGeometry.width() > 0.0 && newGeometry.height() > 0.0 &&
        newGeometry.width() != oldGeometry.width()) {
        followScroll();
        if (places().valueOf(m_posIndex, m_posValue))
            placeAgain();
    } else if (newGeometry.height() != oldGeometry.height()) {
        handlePlotSizeChanged();
    }
}

QSGNode *GraphCursor::updatePaintNode(QSGNode *old, UpdatePaintNodeData *data)
{
    QSGNode *stamps = graph::stampedNode(this, old, graph::FigureChange::InPart);
    return stamps ? stamps : QQuickPaintedItem::updatePaintNode(old, data);
}

void GraphCursor::paintShifted(QPainter *painter)
{
    if (!m_zoomRect || !isCursorVisible())
        return;
    painter->setFont(m_font);
    graph::CursorPainter lines(painter, m_direction, *this);
    if (m_direction.snapsToSamples)
        paintMarkers(lines);
    lines.band(m_posOnScreen, m_paintedWidth, m_color);
    // The property keeps the alpha of the glow; documents see it there.
    m_color.setAlpha(127);
}

void GraphCursor::paintMarkers(graph::CursorPainter &lines) const
{
    for (int i = 0; i < m_markers.count(); ++i) {
        const GraphMarker *marker = m_markers.at(i);
        if (!marker || !marker->isVisible())
            continue;
        lines.marker(marker->posOnScreen(), marker->color(), !m_look);
        if (primarySeries() && marker->showDelta())
            lines.distance(marker->formattedDeltaX(), m_posOnScreen, marker->posOnScreen(), marker->deltaY(),
                           m_look ? graph::deltaTextBesideMarker : graph::deltaTextX);
    }
}
