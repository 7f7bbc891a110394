#include "kit/chart/ReadingTexts.h"

#include "data/PlotData.h"
#include "kit/axis/ChartAxis.h"
#include "kit/plots/Trace.h"
#include "kit/plots/WaterfallPlot.h"
#include "platform/ui/NumberText.h"
#include "view/base/AbstractPlot.h"

#include <QDateTime>

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

QString ReadingTexts::position(const ChartAxis &axis, double value) const
{
    if (axis.scale() == ChartAxis::Time)
        return timeText(value, axis.utc(), std::abs(axis.maxVisible() - axis.minVisible()));
    if (axis.formatter())
        return axis.formatter()->formatValue(value);
    const QString unit = axis.unit();
    if (!m_formatter || m_formatter->getType() != unit) {
        m_formatter.reset(getFormatter(unit));
        if (m_formatter) {
            m_formatter->setSigDigs(positionDigits.sigDigs);
            m_formatter->setPrecision(positionDigits.precision);
        }
    }
    return m_formatter ? m_formatter->formatValue(value) : withUnit(value, positionDigits, unit);
}

QString ReadingTexts::distance(const ChartAxis &axis, double distance) const
{
    if (axis.scale() != ChartAxis::Time)
        return position(axis, distance);
    constexpr double minute = 60.0;
    constexpr double day = 86400.0;
    if (distance < minute)
        return withUnit(distance, positionDigits, QStringLiteral("s"));
    const int days = int(std::min(distance / day, 1e6));
    const QTime time = QTime(0, 0).addSecs(int(std::fmod(distance, day)));
    const QString clock = time.toString(QStringLiteral("HH:mm:ss"));
    return days > 0 ? QString::number(days) + QStringLiteral(" d ") + clock : clock;
}

QString ReadingTexts::value(const AbstractPlot *plot, double value)
{
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
