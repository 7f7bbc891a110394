#include "cursors/GraphMarker.h"

#include "axis/ValueAxis.h"
#include "common/SafeInteger.h"
#include "cursors/GraphCursor.h"
#include "cursors/NearestSample.h"
#include "data/PlotData.h"
#include "view/base/AbstractPlot.h"

#include <QMetaMethod>
#include <QQmlProperty>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

namespace {

QString delta(const QString &text)
{
    return QStringLiteral("\u0394 %1").arg(text);
}

QString formattedDifference(const PlotData &data, double a, double b)
{
    return delta(data.formattedYValue(std::abs(a - b)));
}

} // namespace

/*!
    \qmltype GraphMarker
    \inqmlmodule graph_plugin
    \brief A fixed position in a GraphCursor's \c markers, drawn as a thin line with its distance to the
    cursor.

    A marker is on a sample of the cursor's primary plot. One that is moved to a sample outside the data
    disappears and comes back when it is next placed on one inside; a marker that the document hides stays hidden.
    Deltas are absolute and kept up to date only while it is visible.
*/
GraphMarker::GraphMarker(QObject *parent)
    : QObject(parent)
{
}

AbstractPlot *GraphMarker::primaryPlot() const
{
    return m_cursor ? m_cursor->primaryPlot() : nullptr;
}

PlotData *GraphMarker::primarySeries() const
{
    return m_cursor ? m_cursor->primarySeries() : nullptr;
}

ValueAxis *GraphMarker::primaryAxis() const
{
    return m_cursor ? m_cursor->followedAxis() : nullptr;
}

void GraphMarker::setCursor(GraphCursor *cursor)
{
    if (m_cursor == cursor)
        return;
    readTexts();
    if (m_cursor)
        disconnect(m_cursor, nullptr, this, nullptr);
    m_cursor = cursor;
    if (m_label)
        m_label->setParentItem(cursor);
    if (!cursor)
        return;
    connect(this, SIGNAL(destroyed()), cursor, SLOT(update()));
    // The cursor announces these with each of its moves, too.
    connect(cursor, SIGNAL(plotValuesChanged()), this, SLOT(handleDeltaChanged()));
}

void GraphMarker::update()
{
    if (m_cursor)
        m_cursor->update();
}

/*!
    \qmlproperty double GraphMarker::posValue
    The data value of the marker's sample, in the unit of the axis; 0 by default. A value that the data do not reach
    yet, because there are none or too few, is kept until they do or the marker is placed elsewhere.

    \qmlproperty double GraphMarker::xValue
    \readonly
    posValue for documents that only read it.

    \qmlproperty string GraphMarker::formattedPosValue
    \qmlproperty string GraphMarker::formattedXValue
    \readonly
    posValue as the primary plot's data writes it; empty by default.

    \qmlproperty double GraphMarker::yValue
    \qmlproperty string GraphMarker::formattedYValue
    \readonly
    The primary plot's value at the marker, as a number in the unit of the axis and as text; 0 and empty by default.
*/
void GraphMarker::setPosValue(double value)
{
    const PlotData *data = primarySeries();
    const int index = data ? data->indexOf(value) : -1;
    if ((!data || !graph::hasSample(*data, index)) && !std::isnan(value)) {
        m_awaitedValue = value;
        if (m_posIndex < 0 && m_posValue != value && (!data || data->size() < 1)) {
            m_posValue = value;
            emit posValueChanged();
        }
    }
    if (primarySeries())
        setPosIndex(index);
}

void GraphMarker::placeAgain()
{
    followScroll();
    if (!m_fellOut)
        setPosValue(m_awaitedValue.value_or(m_posValue));
}

void GraphMarker::followScroll()
{
    const PlotData *data = m_placedData == primarySeries() ? m_placedData.data() : nullptr;
    const qint64 scrolled = data && m_posIndex >= 0 ? data->history().scrolledSince(m_placedHistory) : 0;
    if (scrolled == 0)
        return;
    m_placedHistory = data->history();
    m_fellOut = m_posIndex < scrolled;
    m_posIndex = m_fellOut ? -1 : int(m_posIndex - scrolled);
    emit posIndexChanged();
    if (m_fellOut)
        hideForLackOfSample();
}

void GraphMarker::placeIfAwaited()
{
    const PlotData *data = m_awaitedValue ? primarySeries() : nullptr;
    const int index = data ? data->indexOf(*m_awaitedValue) : -1;
    if (data && graph::hasSample(*data, index))
        setPosIndex(index);
}

/*!
    \qmlproperty int GraphMarker::posOnScreen
    The pixel column of the marker in the cursor's item, which may lie outside of it; 0 by default. A write moves the
    marker to the sample nearest to that column.

    \qmlproperty int GraphMarker::xPosOnScreen
    \qmlproperty int GraphMarker::yPosOnScreen
    \readonly
    The pixel of the marker's sample in the cursor's item, for labels; 0 by default.
*/
void GraphMarker::setPosOnScreen(int pixel)
{
    if (const AbstractPlot *plot = primaryPlot())
        setPosValue(plot->mapFromItemX(pixel));
}

/*!
    \qmlproperty int GraphMarker::posIndex
    The index of the marker's sample, -1 until it is placed. An index outside the data hides the marker until it is placed
    on one inside.
*/
void GraphMarker::setPosIndex(int index)
{
    const PlotData *data = primarySeries();
    if (!data)
        return;
    if (!graph::hasSample(*data, index)) {
        hideForLackOfSample();
        return;
    }
    followScroll();
    m_awaitedValue.reset();
    m_fellOut = false;
    m_placedData = data;
    m_placedHistory = data->history();
    if (m_posIndex != index) {
        m_posIndex = index;
        m_posValue = data->x(index);
        m_formattedPosValue = data->formattedXValue(m_posValue);
        handleDeltaChanged();
        emit posIndexChanged();
        emit posValueChanged();
        emit formattedPosValueChanged();
    }
    placeOnScreen();
    if (m_hiddenForLackOfSample)
        show(true);
}

void GraphMarker::placeOnScreen()
{
    // Those who heard of the new position may have replaced the data.
    const PlotData *data = primarySeries();
    if (!data || !graph::hasSample(*data, m_posIndex))
        return;
    const int place = graph::pixel(primaryPlot()->mapToItemX(data->x(m_posIndex)));
    if (m_posOnScreen == place)
        return;
    m_posOnScreen = place;
    emit posOnScreenChanged(place);
    update();
}

void GraphMarker::hideForLackOfSample()
{
    const bool shown = m_visible || m_hiddenForLackOfSample;
    show(false);
    m_hiddenForLackOfSample = shown;
}

/*!
    \qmlproperty color GraphMarker::color
    The colour of the line and of the distance, dark yellow by default.
*/
void GraphMarker::setColor(QColor color)
{
    m_hasOwnColor = true;
    showColor(color);
}

void GraphMarker::setDefaultColor(const QColor &color)
{
    if (!m_hasOwnColor)
        showColor(color);
}

void GraphMarker::showColor(const QColor &color)
{
    if (m_color == color)
        return;
    m_color = color;
    emit colorChanged();
    update();
}

/*!
    \qmlproperty bool GraphMarker::visible
    Whether the marker is drawn and its deltas are computed; false by default.
*/
void GraphMarker::setVisible(bool visible)
{
    m_hasWrittenVisible = true;
    show(visible);
}

void GraphMarker::show(bool visible)
{
    m_hiddenForLackOfSample = false;
    if (m_visible == visible)
        return;
    readTexts();
    m_visible = visible;
    emit visibleChanged();
    handleDeltaChanged();
    update();
}

/*!
    \qmlproperty bool GraphMarker::showDelta
    Whether formattedDelta is written between cursor and marker, true by default.
*/
void GraphMarker::setShowDelta(bool show)
{
    if (m_showDelta == show)
        return;
    m_showDelta = show;
    emit showDeltaChanged();
    update();
}

/*!
    \qmlproperty int GraphMarker::deltaY
    The pixel row of that text's base line, 100 by default.
*/
void GraphMarker::setDeltaY(int deltaY)
{
    if (m_deltaY == deltaY)
        return;
    m_deltaY = deltaY;
    emit deltaYChanged();
    update();
}

/*!
    \qmlproperty Item GraphMarker::label
    \default
    An item to show with the marker, placed into the cursor. Its property \c _parentMarker, if it has one, is
    set to the marker.
*/
void GraphMarker::setLabel(QQuickItem *label)
{
    if (m_label == label)
        return;
    m_label = label;
    if (label) {
        label->setParentItem(m_cursor);
        QQmlProperty::write(label, QStringLiteral("_parentMarker"), QVariant::fromValue(this));
    }
    emit labelChanged();
}

/*!
    \qmlproperty string GraphMarker::formattedDelta
    \qmlproperty string GraphMarker::formattedDeltaX
    \readonly
    The distance to the cursor along the axis, such as "Δ 2.5 km". The signal is \c formattedDeltaXChanged for both.
*/
/*!
    \qmlproperty string GraphMarker::formattedDeltaY
    \readonly
    The difference between the primary plot's values at the cursor and at the marker.
*/
/*!
    \qmlproperty list<string> GraphMarker::formattedDeltasY
    \readonly
    The same for every plot of the cursor; "Δ ---" for one without data.
*/
void GraphMarker::handleDeltaChanged()
{
    if (!hasDelta())
        return;
    const PlotData *data = primarySeries();
    const QString deltaX = delta(distanceText(*data));
    const double y = data->y(m_posIndex);
    const int yPlace = graph::pixel(primaryPlot()->mapToItemY(y));
    const bool areHeard = areTextsHeard();
    const Texts texts = areHeard ? foundTexts() : Texts();
    m_areTextsOld = !areHeard;

    // Everything is computed before anything is announced: listeners may take the data away.
    const auto publish = [this](auto &member, const auto &value, void (GraphMarker::*changed)()) {
        if (member == value)
            return;
        member = value;
        emit(this->*changed)();
    };
    // This one is painted, whether or not the lines have moved.
    if (m_showDelta && m_formattedDeltaX != deltaX)
        update();
    publish(m_formattedDeltaX, deltaX, &GraphMarker::formattedDeltaXChanged);
    publish(m_yValue, y, &GraphMarker::yValueChanged);
    publish(m_yPosOnScreen, yPlace, &GraphMarker::yPosOnScreenChanged);
    if (!areHeard)
        return;
    publish(m_texts.y, texts.y, &GraphMarker::formattedYValueChanged);
    publish(m_texts.deltaY, texts.deltaY, &GraphMarker::formattedDeltaYChanged);
    publish(m_texts.deltasY, texts.deltasY, &GraphMarker::formattedDeltasYChanged);
}

bool GraphMarker::hasDelta() const
{
    const PlotData *data = primarySeries();
    return data && m_visible && m_posIndex >= 0 && m_posIndex < data->size();
}

bool GraphMarker::areTextsHeard() const
{
    static const QMetaMethod changes[] = {QMetaMethod::fromSignal(&GraphMarker::formattedYValueChanged),
                                          QMetaMethod::fromSignal(&GraphMarker::formattedDeltaYChanged),
                                          QMetaMethod::fromSignal(&GraphMarker::formattedDeltasYChanged)};
    return std::any_of(std::begin(changes), std::end(changes),
                       [this](const QMetaMethod &change) { return isSignalConnected(change); });
}

const GraphMarker::Texts &GraphMarker::readTexts() const
{
    if (std::exchange(m_areTextsOld, false) && hasDelta())
        m_texts = foundTexts();
    return m_texts;
}

GraphMarker::Texts GraphMarker::foundTexts() const
{
    const PlotData &data = *primarySeries();
    const double y = data.y(m_posIndex);
    const double atCursor = data.y(graph::nearestSample(data, m_cursor->posValue()));
    return {data.formattedYValue(y), formattedDifference(data, atCursor, y), seriesDeltas()};
}

QString GraphMarker::distanceText(const PlotData &data) const
{
    const double distance = std::abs(m_cursor->posValue() - m_posValue);
    return m_cursor->look() ? m_cursor->look()->distanceText(distance) : data.formattedXValue(distance);
}

QStringList GraphMarker::seriesDeltas() const
{
    QStringList deltas;
    const graph::TrackedPlots &plots = m_cursor->trackedPlots();
    for (int i = 0; i < plots.seriesCount(); ++i) {
        const PlotData *data = plots.series(i);
        if (!data || data->size() < 1) {
            deltas.append(delta(QStringLiteral("---")));
            continue;
        }
        const double atCursor = data->y(graph::nearestSample(*data, m_cursor->posValue()));
        const double atMarker = data->y(graph::nearestSample(*data, m_posValue));
        deltas.append(formattedDifference(*data, atCursor, atMarker));
    }
    return deltas;
}
