#include "kit/chart/ReadingTexts.h"

#include "data/PlotData.h"
#include "kit/axis/AxisUnit.h"
#include "kit/axis/ChartAxis.h"
#include "kit/axis/NumberLabels.h"
#include "kit/axis/UnitText.h"
#include "kit/plots/PlotUnits.h"
#include "kit/plots/WaterfallPlot.h"
#include "platform/ui/NumberText.h"
#include "view/base/AbstractPlot.h"

#include <QTime>

#include <cmath>

namespace graph {

namespace {

constexpr DigitLimits positionDigits{6, 9};
// Of data that say nothing else.
constexpr DigitLimits valueDigits{4, 2};
// More are errors of rounding.
constexpr int mostDigits = 15;
// Two prefixes below that of the axis: readings of the same axis are compared, also where one is near zero.
constexpr int finestShared = 6;

int exponentOf(double magnitude)
{
    return int(std::floor(std::log10(magnitude) + 1e-9));
}

// The exponent of the prefix below.
int prefixBelow(int exponent)
{
    return 3 * int(std::floor(exponent / 3.0));
}

// Those with more digits where neighbouring pixels differ in them.
DigitLimits finerThanPixels(DigitLimits limits, const ValueAxis *axis, double value, const AxisUnit &unit)
{
    const double span = axis ? std::abs(axis->maxVisible() - axis->minVisible()) : 0.0;
    const double resolution = axis ? resolutionAt(value, span, axis->scaleKind()) : 0.0;
    if (value == 0.0 || !std::isfinite(value) || !(resolution > 0.0) || !std::isfinite(resolution))
        return limits;
    const int exponent = exponentOf(std::abs(value));
    const int last = exponentOf(resolution);
    const int prefix = std::max(prefixBelow(exponent), unit.allowed(prefixBelow(exponent)));
    limits.sigDigs = std::max(limits.sigDigs, std::min(exponent - last + 1, mostDigits));
    limits.precision = std::max(limits.precision, prefix - last);
    return limits;
}

QString withUnit(double value, const DigitLimits &limits, const QString &unit)
{
    return withUnitBehind(numberText(value, limits, {}).digits, unit);
}

// In the prefix of the numbers of the axis, with the digits that the value has in its own. Empty where that does not
// go, or would be nothing but zeros.
QString inPrefixOfAxis(const ValueAxis *axis, const AxisUnit &unit, double value, DigitLimits limits)
{
    const auto *chartAxis = qobject_cast<const ChartAxis *>(axis);
    if (!chartAxis || !std::isfinite(value) || AxisUnit(chartAxis->unit()).symbol() != unit.symbol())
        return {};
    const std::optional<int> prefix = chartAxis->numberPrefix();
    if (!prefix)
        return {};
    const int own = value == 0.0 ? *prefix : unit.allowed(prefixBelow(exponentOf(std::abs(value))));
    const int finer = *prefix - own;
    if (finer > finestShared || finer < -3)
        return {};
    limits.precision += std::max(finer, 0);
    return withUnitBehind(numberText(value, limits, {*prefix, *prefix}).digits, unit.prefixed(*prefix));
}

// The values of a waterfall are not those of its axis.
const ValueAxis *axisOfValues(const AbstractPlot &plot)
{
    return qobject_cast<const WaterfallPlot *>(&plot) ? nullptr : plot.axisY();
}

// Of a trace that names none as the axis has it.
QString unitOf(const AbstractPlot &plot, const ValueAxis *axis)
{
    const QString unit = unitOfValues(plot);
    return unit.isEmpty() && axis ? axis->unit() : unit;
}

} // namespace

QString ReadingTexts::position(const ChartAxis &axis, double value) const
{
    if (axis.formatter())
        return axis.formatter()->formatValue(value);
    if (axis.scale() == ChartAxis::Time)
        return axis.valueText(value);
    const AxisUnit unit(axis.unit());
    const DigitLimits digits = finerThanPixels(positionDigits, &axis, value, unit);
    QString shared = inPrefixOfAxis(&axis, unit, value, digits);
    return shared.isEmpty() ? number(axis.unit(), value, digits) : shared;
}

// In a prefix of its own.
QString ReadingTexts::number(const QString &unit, double value, const DigitLimits &digits) const
{
    auto known = m_formatters.find(unit);
    if (known == m_formatters.end())
        known = m_formatters.emplace(unit, getFormatter(unit)).first;
    BaseFormatter *formatter = known->second.get();
    if (!formatter)
        return withUnit(value, digits, AxisUnit(unit).symbol());
    formatter->setSigDigs(digits.sigDigs);
    formatter->setPrecision(digits.precision);
    return formatter->formatValue(value);
}

QString ReadingTexts::distance(const ChartAxis &axis, double distance) const
{
    if (axis.scale() != ChartAxis::Time)
        return axis.formatter() ? axis.formatter()->formatValue(distance)
                                : number(AxisUnit::ofDifferences(axis.unit()), distance, positionDigits);
    constexpr double minute = 60.0;
    constexpr double day = 86400.0;
    if (distance < minute)
        return withUnit(distance, positionDigits, QStringLiteral("s"));
    const int days = int(std::min(distance / day, 1e6));
    const QTime time = QTime(0, 0).addSecs(int(std::fmod(distance, day)));
    const QString clock = time.toString(QStringLiteral("HH:mm:ss"));
    return days > 0 ? QString::number(days) + QStringLiteral(" d ") + clock : clock;
}

QString ReadingTexts::value(const AbstractPlot *plot, double value) const
{
    return written(plot, value, [](const QString &unit) { return unit; });
}

QString ReadingTexts::difference(const AbstractPlot *plot, double difference) const
{
    return written(plot, difference, &AxisUnit::ofDifferences);
}

QString ReadingTexts::written(const AbstractPlot *plot, double value, UnitFor unitFor) const
{
    const PlotData *data = plot ? plot->plotData() : nullptr;
    if (!data)
        return {};
    const ValueAxis *axis = axisOfValues(*plot);
    if (axis && axis->formatter())
        return axis->formatter()->formatValue(value);
    const QString unit = unitFor(unitOf(*plot, axis));
    const AxisUnit symbol(unit);
    DigitLimits digits{data->ySigDigs(), data->yPrecision()};
    if (digits.sigDigs == valueDigits.sigDigs && digits.precision == valueDigits.precision)
        digits = finerThanPixels(digits, axis, value, symbol);
    QString shared = inPrefixOfAxis(axis, symbol, value, digits);
    return shared.isEmpty() ? number(unit, value, digits) : shared;
}

} // namespace graph
