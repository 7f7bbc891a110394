#include "cursors/GraphCursorAttached.h"

#include "common/FuzzyEqual.h"
#include "common/ObjectCounter.h"
#include "common/SafeInteger.h"
#include "data/PlotData.h"
#include "view/base/AbstractPlot.h"

#include <cmath>

namespace {

bool sameValue(double a, double b)
{
    return graph::fuzzyEqual(a, b) || (std::isnan(a) && std::isnan(b));
}

graph::ObjectCounter &counter()
{
    static graph::ObjectCounter theCounter("GCA");
    return theCounter;
}

} // namespace

/*!
    \qmltype GraphCursorAttached
    \inqmlmodule graph_plugin
    \brief The reading of a GraphCursor for one plot, attached to a direct child item of the cursor.

    \qmlattachedproperty GraphCursor GraphCursor::cursor
    \readonly
    The cursor whose child the item is; null for any other item, whose readings then stay 0 and empty.

    \qmlattachedproperty int GraphCursor::xPosOnScreen
    \qmlattachedproperty int GraphCursor::yPosOnScreen
    \readonly
    The pixel in the cursor's item of the plot's value at the cursor.

    \qmlattachedproperty double GraphCursor::xValue
    \qmlattachedproperty double GraphCursor::yValue
    \readonly
    The data value at the cursor and the plot's value there, in the units of the axes.

    \qmlattachedproperty string GraphCursor::formattedXValue
    \qmlattachedproperty string GraphCursor::formattedYValue
    \readonly
    The same as texts: x as the data of the primary plot writes it, y as the plot's own data does.
*/
GraphCursorAttached::GraphCursorAttached(QObject *parent)
    : QObject(parent)
{
    setObjectName(counter().nextName());
}

void GraphCursorAttached::setCursor(GraphCursor *cursor)
{
    if (m_cursor == cursor)
        return;
    if (m_cursor)
        disconnect(m_cursor, nullptr, this, nullptr);
    m_cursor = cursor;
    if (cursor && m_followsX)
        connectX();
    else if (cursor)
        connectY();
    emit cursorChanged();
}

void GraphCursorAttached::connectX()
{
    connect(m_cursor, SIGNAL(plotsChanged()), this, SLOT(handlePlotsChanged()));
    connect(m_cursor, SIGNAL(posOnScreenChanged(int)), this, SLOT(handleXPosOnScreenChanged(int)));
    connect(m_cursor, SIGNAL(yPositionsChanged()), this, SLOT(handleYPosOnScreenChanged()));
    connect(m_cursor, SIGNAL(posValueChanged()), this, SLOT(handleXValueChanged()));
    connect(m_cursor, SIGNAL(yValuesChanged()), this, SLOT(handleYValueChanged()));
    connect(m_cursor, &GraphCursor::plotValuesChanged, this, &GraphCursorAttached::updatePeak);
    handleXPosOnScreenChanged(m_cursor->posOnScreen());
}

void GraphCursorAttached::connectY()
{
    connect(m_cursor, SIGNAL(plotsChanged()), this, SLOT(handlePlotsChanged()));
    connect(m_cursor, SIGNAL(posOnScreenChanged(int)), this, SLOT(handleYPosOnScreenChanged(int)));
    connect(m_cursor, SIGNAL(posValueChanged()), this, SLOT(handleYValueChanged()));
    handleYPosOnScreenChanged(m_cursor->posOnScreen());
}

AbstractPlot *GraphCursorAttached::plot() const
{
    return m_plot;
}

/*!
    \qmlattachedproperty AbstractPlot GraphCursor::plot
    The plot whose values are read, null by default. Values stay as they are while it is not one of the
    cursor's plots.
*/
void GraphCursorAttached::setPlot(AbstractPlot *plot)
{
    if (m_plot == plot)
        return;
    m_plot = plot;
    handlePlotsChanged();
    emit plotChanged();
}

void GraphCursorAttached::handlePlotsChanged()
{
    setIndex(m_cursor ? m_cursor->indexOfPlot(m_plot) : -1);
    handleXValueChanged();
    handleYValueChanged();
    handleYPosOnScreenChanged(0);
}

/*!
    \qmlattachedproperty int GraphCursor::index
    \readonly
    The place of the plot in the cursor's plots, -1 if it is not there.
*/
void GraphCursorAttached::setIndex(int index)
{
    if (m_index == index)
        return;
    m_index = index;
    emit indexChanged();
}

/*!
    \qmlattachedproperty bool GraphCursor::peak
    \readonly
    Whether the plot has a value at the cursor and none of the other plots' values is drawn higher on the screen.
*/
void GraphCursorAttached::setPeak(bool peak)
{
    if (m_peak == peak)
        return;
    m_peak = peak;
    emit peakChanged();
}

void GraphCursorAttached::handleXPosOnScreenChanged(int x)
{
    if (m_xPosOnScreen == x)
        return;
    m_xPosOnScreen = x;
    emit xPosOnScreenChanged();
}

void GraphCursorAttached::handleYPosOnScreenChanged(int y)
{
    if (!m_followsX) {
        setYPosOnScreen(y);
        return;
    }
    const QList<qreal> positions = m_cursor ? m_cursor->yPositions() : QList<qreal>();
    if (m_index < 0 || m_index >= positions.size())
        return;
    updatePeak();
    setYPosOnScreen(graph::pixel(positions.at(m_index)));
}

// A plot that becomes empty, or is no longer, may keep its position: 0 is that of an empty one and that of the top.
void GraphCursorAttached::updatePeak()
{
    if (!m_cursor || m_index < 0)
        return;
    const QList<qreal> positions = m_cursor->yPositions();
    const auto isAbove = [&](int i) {
        return m_cursor->hasReading(i) && positions.at(m_index) > positions.at(i);
    };
    bool peak = m_cursor->hasReading(m_index) && m_index < positions.size();
    for (int i = 0; peak && i < positions.size(); ++i)
        peak = !isAbove(i);
    setPeak(peak);
}

void GraphCursorAttached::setYPosOnScreen(int y)
{
    if (m_yPosOnScreen == y)
        return;
    m_yPosOnScreen = y;
    emit yPosOnScreenChanged();
}

void GraphCursorAttached::handleXValueChanged()
{
    if (!m_cursor)
        return;
    const double value = m_cursor->posValue();
    if (!sameValue(value, m_xValue)) {
        m_xValue = value;
        emit xValueChanged();
    }
    const PlotData *data = m_cursor ? m_cursor->primarySeries() : nullptr;
    if (!data)
        return;
    const QString text = data->formattedXValue(value);
    if (m_formattedXValue == text)
        return;
    m_formattedXValue = text;
    emit formattedXValueChanged();
}

void GraphCursorAttached::handleYValueChanged()
{
    if (!m_cursor)
        return;
    if (!m_followsX) {
        if (const PlotData *data = m_cursor->primarySeries())
            publishYValue(m_cursor->posValue(), data->formattedYValue(m_cursor->posValue()));
        return;
    }
    const QList<qreal> values = m_cursor->yValues();
    if (m_index >= 0 && m_index < values.size())
        publishYValue(values.at(m_index), m_cursor->formattedYValues().value(m_index));
}

void GraphCursorAttached::publishYValue(double value, const QString &formatted)
{
    if (!sameValue(value, m_yValue)) {
        m_yValue = value;
        emit yValueChanged();
    }
    if (m_formattedYValue == formatted)
        return;
    m_formattedYValue = formatted;
    emit formattedYValueChanged();
}
