#include "kit/chart/ChartTexts.h"

#include "data/PlotData.h"
#include "kit/axis/ChartAxis.h"
#include "kit/chart/ChartView.h"
#include "kit/plots/Trace.h"
#include "kit/plots/WaterfallPlot.h"
#include "view/base/AbstractPlot.h"

#include <QMetaMethod>

namespace graph {

/*!
    \qmltype ChartTexts
    \internal
    The texts of values for bindings.
*/
ChartTexts::ChartTexts(ChartView *chart)
    : EarlyItem(chart->underlay())
    , m_chart(chart)
{
}

QString ChartTexts::formatX(double value) const
{
    return m_chart->formatX(value);
}

QString ChartTexts::formatY(QQuickItem *trace, double value) const
{
    return m_chart->formatY(trace, value);
}

QString ChartTexts::formatDifferenceY(QQuickItem *trace, double difference) const
{
    return m_chart->formatDifferenceY(trace, difference);
}

void ChartTexts::watch(const QList<AbstractPlot *> &plots, const QVector<ValueAxis *> &axes)
{
    for (const ValueAxis *axis : axes)
        watchAxis(axis);
    for (const AbstractPlot *plot : plots)
        watchPlot(plot);
}

void ChartTexts::watchAxis(const ValueAxis *axis)
{
    if (!axis || !addToWatched(axis))
        return;
    // Digits, the kind of scale and all else come with axisChanged.
    connect(axis, &ValueAxis::visibleRangeChanged, this, &ChartTexts::invalidate);
    connect(axis, &ValueAxis::axisChanged, this, &ChartTexts::invalidate);
    if (const auto *chartAxis = qobject_cast<const ChartAxis *>(axis))
        connect(chartAxis, &ChartAxis::lengthChanged, this, &ChartTexts::invalidate);
}

void ChartTexts::watchPlot(const AbstractPlot *plot)
{
    if (!addToWatched(plot))
        return;
    connect(plot, &AbstractPlot::axisYChanged, this, [this, plot] {
        watchAxis(plot->axisY());
        invalidate();
    });
    connect(plot, &AbstractPlot::plotDataChanged, this, [this, plot] { watchData(plot); });
    if (const auto *trace = qobject_cast<const Trace *>(plot))
        connect(trace, &Trace::unitChanged, this, &ChartTexts::invalidate);
    if (const auto *waterfall = qobject_cast<const WaterfallPlot *>(plot))
        connect(waterfall, &WaterfallPlot::unitChanged, this, &ChartTexts::invalidate);
    watchAxis(plot->axisY());
    watchData(plot);
}

void ChartTexts::watchData(const AbstractPlot *plot)
{
    invalidate();
    const PlotData *data = plot->plotData();
    if (!data || !addToWatched(data))
        return;
    connect(data, &PlotData::ySigDigsChanged, this, &ChartTexts::invalidate);
    connect(data, &PlotData::yPrecisionChanged, this, &ChartTexts::invalidate);
    connect(data, &PlotData::yUnitsChanged, this, &ChartTexts::invalidate);
}

bool ChartTexts::addToWatched(const QObject *object)
{
    if (m_watched.contains(object))
        return false;
    m_watched.insert(object);
    connect(object, &QObject::destroyed, this, [this, object] { m_watched.remove(object); });
    return true;
}

void ChartTexts::invalidate()
{
    static const QMetaMethod signal = QMetaMethod::fromSignal(&ChartTexts::changed);
    if (m_isValid && isSignalConnected(signal)) {
        m_isValid = false;
        prepareFrame();
    }
}

void ChartTexts::prepare()
{
    if (!std::exchange(m_isValid, true))
        emit changed();
}

} // namespace graph
