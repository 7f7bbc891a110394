#include "kit/chart/ChartView.h"

#include "data/PlotData.h"
#include "kit/axis/ChartAxis.h"
#include "kit/chart/ChartTheme.h"
#include "kit/plots/Trace.h"
#include "kit/plots/WaterfallPlot.h"
#include "platform/ui/BaseFormatter.h"
#include "platform/ui/NumberText.h"

#include <QDateTime>

// The texts of values at a cursor.

namespace graph {

namespace {

constexpr DigitLimits positionDigits{6, 9};

QString withUnit(double value, const DigitLimits &limits, const QString &unit)
{
    const QString number = numberText(value, limits, {}).digits;
    return unit.isEmpty() ? number : number + QLatin1Char(' ') + unit;
}

QString timeText(double seconds, bool utc, double range)
{
    const QDateTime time =
        QDateTime::fromMSecsSinceEpoch(qRound64(seconds * 1000.0), utc ? Qt::UTC : Qt::LocalTime);
    if (!std::isfinite(seconds) || !time.isValid())
        return QStringLiteral("---");
    constexpr double day = 86400.0;
    return time.toString(range < 60.0  ? QStringLiteral("HH:mm:ss.zzz")
                         : range < day ? QStringLiteral("HH:mm:ss")
                                       : QStringLiteral("yyyy-MM-dd HH:mm"));
}

} // namespace

/*!
    \qmlmethod string Chart::formatX(real value)
    \qmlmethod string Chart::formatY(Item trace, real value)
    A value of axisX, and one of a trace, with its unit as readings show it.
*/
QString ChartView::formatX(double value) const
{
    if (m_axisX->scale() == ChartAxis::Time)
        return timeText(value, m_axisX->utc(), std::abs(m_axisX->maxVisible() - m_axisX->minVisible()));
    if (m_axisX->formatter())
        return m_axisX->formatter()->formatValue(value);
    const QString unit = m_axisX->unit();
    if (!m_positionFormatter || m_positionFormatter->getType() != unit) {
        m_positionFormatter.reset(getFormatter(unit));
        if (m_positionFormatter) {
            m_positionFormatter->setSigDigs(positionDigits.sigDigs);
            m_positionFormatter->setPrecision(positionDigits.precision);
        }
    }
    return m_positionFormatter ? m_positionFormatter->formatValue(value)
                               : withUnit(value, positionDigits, unit);
}

// Between a cursor and a marker: of a time in seconds, or in days and hours.
QString ChartView::distanceText(const ValueAxis *axis, double distance) const
{
    const auto *chartAxis = qobject_cast<const ChartAxis *>(axis);
    if (!chartAxis)
        return formatX(distance);
    if (chartAxis->scale() != ChartAxis::Time)
        return chartAxis == m_axisX ? formatX(distance) : chartAxis->valueText(distance);
    constexpr double minute = 60.0;
    constexpr double day = 86400.0;
    if (distance < minute)
        return withUnit(distance, positionDigits, QStringLiteral("s"));
    const int days = int(std::min(distance / day, 1e6));
    const QTime time = QTime(0, 0).addSecs(int(std::fmod(distance, day)));
    const QString clock = time.toString(QStringLiteral("HH:mm:ss"));
    return days > 0 ? QString::number(days) + QStringLiteral(" d ") + clock : clock;
}

QString ChartView::formatY(QQuickItem *item, double value) const
{
    const auto *plot = qobject_cast<AbstractPlot *>(item);
    const PlotData *data = plot ? plot->plotData() : nullptr;
    if (!data)
        return {};
    if (data->yFormatter())
        return data->formattedYValue(value);
    const auto *trace = qobject_cast<const Trace *>(plot);
    const auto *waterfall = qobject_cast<const WaterfallPlot *>(plot);
    return withUnit(value, {data->ySigDigs(), data->yPrecision()},
                    trace       ? trace->unit()
                    : waterfall ? waterfall->unit()
                                : QString());
}

} // namespace graph
