#include "kit/chart/ReadingTexts.h"

#include "data/PlotData.h"
#include "kit/axis/AxisUnit.h"
#include "kit/axis/ChartAxis.h"
#include "kit/plots/PlotUnits.h"
#include "kit/plots/Trace.h"
#include "kit/plots/WaterfallPlot.h"
#include "platform/ui/NumberText.h"
#include "view/base/AbstractPlot.h"

#include <QTime>

#include <cmath>

namespace graph {

namespace {

constexpr DigitLimits positionDigits{6, 9};

QString withUnit(double value, const DigitLimits &limits, const QString &unit)
{
    const QString number = numberText(value, limits, {}).digits;
    return unit.isEmpty() ? number : number + QLatin1Char(' ') + unit;
}

int prefixOf(double magnitude, const AxisUnit &unit)
{
    return unit.allowed(3 * int(std::floor(std::log10(magnitude) / 3.0 + 1e-9)));
}

// In the prefix of the numbers of the axis, with the digits that the value has in its own. Empty where that does not
// go, or would be mostly zeros.
QString inPrefixOfAxis(const ValueAxis *axis, const AxisUnit &unit, double value, DigitLimits limits)
{
    const auto *chartAxis = qobject_cast<const ChartAxis *>(axis);
    if (!chartAxis || !std::isfinite(value) || AxisUnit(chartAxis->unit()).symbol() != unit.symbol())
        return {};
    const std::optional<int> prefix = chartAxis->numberPrefix();
    if (!prefix)
        return {};
    const int finer = value == 0.0 ? 0 : *prefix - prefixOf(std::abs(value), unit);
    if (std::abs(finer) > 3)
        return {};
    limits.precision += std::max(finer, 0);
    return numberText(value, limits, {*prefix, *prefix}).digits + QLatin1Char(' ') + unit.prefixed(*prefix);
}

// A limit is in the unit of what it limits.
QString unitOf(const AbstractPlot &plot)
{
    const QString unit = unitOfValues(plot);
    const bool hasOwn = qobject_cast<const Trace *>(&plot) || qobject_cast<const WaterfallPlot *>(&plot);
    return unit.isEmpty() && !hasOwn && plot.axisY() ? plot.axisY()->unit() : unit;
}

} // namespace

QString ReadingTexts::position(const ChartAxis &axis, double value) const
{
    if (axis.scale() == ChartAxis::Time)
        return axis.valueText(value);
    if (axis.formatter())
        return axis.formatter()->formatValue(value);
    QString shared = inPrefixOfAxis(&axis, AxisUnit(axis.unit()), value, positionDigits);
    return shared.isEmpty() ? number(axis.unit(), value) : shared;
}

// In a prefix of its own.
QString ReadingTexts::number(const QString &unit, double value) const
{
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
        return axis.formatter() ? axis.formatter()->formatValue(distance) : number(axis.unit(), distance);
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
    const DigitLimits digits{data->ySigDigs(), data->yPrecision()};
    const AxisUnit unit(unitOf(*plot));
    QString shared = inPrefixOfAxis(plot->axisY(), unit, value, digits);
    if (!shared.isEmpty())
        return shared;
    if (data->yFormatter())
        return data->formattedYValue(value);
    return withUnit(value, digits, unit.symbol());
}

} // namespace graph
