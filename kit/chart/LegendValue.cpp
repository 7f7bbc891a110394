#include "kit/chart/LegendValue.h"

#include "axis/ValueAxis.h"
#include "cursors/GraphCursor.h"
#include "data/PlotData.h"
#include "kit/chart/TraceReach.h"
#include "kit/data/Store.h"
#include "kit/plots/Trace.h"
#include "view/base/AbstractPlot.h"

#include <algorithm>
#include <cmath>

namespace graph {

/*!
    \qmltype LegendValue
    \internal
    The value behind a name of a legend.
*/
LegendValue::LegendValue(QQuickItem *parent)
    : EarlyItem(parent)
{
}

AbstractPlot *LegendValue::plot() const
{
    return m_plot;
}

GraphCursor *LegendValue::cursor() const
{
    return m_cursor;
}

void LegendValue::setChart(ChartView *chart)
{
    if (m_chart == chart)
        return;
    m_chart = chart;
    invalidate();
    emit sourceChanged();
}

void LegendValue::setPlot(AbstractPlot *plot)
{
    if (m_plot == plot)
        return;
    if (m_plot)
        disconnect(m_plot, nullptr, this, nullptr);
    m_plot = plot;
    if (plot) {
        connect(plot, &QQuickItem::visibleChanged, this, [this] { invalidate(); });
        connect(plot, &AbstractPlot::axisYChanged, this, [this] { invalidate(); });
        connect(plot, &AbstractPlot::plotDataChanged, this, [this] { followData(); });
        if (auto *trace = qobject_cast<Trace *>(plot))
            connect(trace, &Trace::readingsChanged, this, [this] { invalidate(); });
    }
    followData();
    emit sourceChanged();
}

void LegendValue::followData()
{
    PlotData *data = m_plot ? m_plot->plotData() : nullptr;
    if (m_data != data) {
        if (m_data)
            disconnect(m_data, nullptr, this, nullptr);
        m_data = data;
        if (data)
            connect(data, &PlotData::plotChanged, this, [this] {
                if (m_isNewest && !m_cursor)
                    invalidate();
            });
    }
    invalidate();
}

void LegendValue::setCursor(GraphCursor *cursor)
{
    if (m_cursor == cursor)
        return;
    if (m_cursor)
        disconnect(m_cursor, nullptr, this, nullptr);
    m_cursor = cursor;
    if (cursor) {
        connect(cursor, &GraphCursor::plotValuesChanged, this, [this] { invalidate(); });
        connect(cursor, &GraphCursor::plotsChanged, this, [this] { invalidate(); });
        // One that goes gives its place to the newest value.
        connect(cursor, &QObject::destroyed, this, [this] { invalidate(); });
    } else if (!m_isNewest && store(m_room, 0.0)) {
        emit roomChanged();
    }
    invalidate();
    emit sourceChanged();
}

void LegendValue::setNewest(bool newest)
{
    if (!store(m_isNewest, newest))
        return;
    invalidate();
    emit sourceChanged();
}

void LegendValue::setLabel(QQuickItem *label)
{
    if (m_label == label)
        return;
    m_label = label;
    // A font changes it, too.
    if (label) {
        connect(label, &QQuickItem::widthChanged, this, [this] { placeLabel(); });
        connect(label, &QQuickItem::implicitWidthChanged, this, [this] { growTo(m_label->implicitWidth()); });
    }
    invalidate();
    emit sourceChanged();
}

void LegendValue::setEnd(double end)
{
    if (!store(m_end, end))
        return;
    placeLabel();
    emit endChanged();
}

void LegendValue::setLongest(double width)
{
    if (!store(m_longest, width))
        return;
    growTo(width);
    emit longestChanged();
}

void LegendValue::invalidate()
{
    m_isValid = false;
    prepareFrame();
}

QString LegendValue::text() const
{
    if (!m_isValid) {
        m_isValid = true;
        m_text = found();
    }
    return m_text;
}

// Empty while there is none.
QString LegendValue::found() const
{
    const PlotData *data = m_plot ? m_plot->plotData() : nullptr;
    const auto *trace = qobject_cast<const Trace *>(m_plot.data());
    if (!m_plot || !m_plot->isVisible() || (trace && !trace->hasReadings()))
        return {};
    if (m_cursor) {
        const int index = m_cursor->indexOfPlot(m_plot);
        const QList<qreal> values = m_cursor->yValues();
        if (index < 0 || index >= values.size() || std::isnan(values.at(index)) ||
            !reachesTo(*m_plot, m_cursor->posValue()))
            return {};
        return m_chart ? m_chart->formatY(m_plot, values.at(index))
                       : m_cursor->formattedYValues().value(index);
    }
    if (!m_isNewest || !data || data->size() == 0)
        return {};
    const double value = data->y(data->size() - 1);
    if (std::isnan(value))
        return {};
    return m_chart ? m_chart->formatY(m_plot, value) : data->formattedYValue(value);
}

// Its range has a say in the digits, and its unit in the prefix.
void LegendValue::followAxis()
{
    ValueAxis *axis = m_plot ? m_plot->axisY() : nullptr;
    if (m_axis == axis)
        return;
    if (m_axis)
        disconnect(m_axis.data(), nullptr, this, nullptr);
    m_axis = axis;
    if (!axis)
        return;
    const auto changed = [this] {
        if (m_isNewest || m_cursor)
            invalidate();
    };
    connect(axis, &ValueAxis::visibleRangeChanged, this, changed);
    connect(axis, &ValueAxis::unitChanged, this, changed);
    connect(axis, &ValueAxis::formatterChanged, this, changed);
}

void LegendValue::prepare()
{
    followAxis();
    if (!store(m_told, text()))
        return;
    if (m_label)
        m_label->setProperty("text", m_told);
    emit textChanged();
}

void LegendValue::placeLabel()
{
    if (m_label)
        m_label->setX(m_end - m_label->width());
}

// It only grows: a live range changes all the time.
void LegendValue::growTo(double width)
{
    if (store(m_room, std::max(m_room, std::ceil(width))))
        emit roomChanged();
}

} // namespace graph
