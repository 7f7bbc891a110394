#include "kit/axis/AxisNumbering.h"

#include "kit/axis/AxisUnit.h"
#include "kit/axis/NumberLabels.h"
#include "kit/axis/TextWidths.h"
#include "kit/axis/TimeTicks.h"
#include "platform/ui/BaseFormatter.h"

#include <QDateTime>
#include <QFontMetricsF>

#include <tuple>

namespace graph {

namespace {

// Distances of ticks in heights of their texts.
constexpr double tickDistanceAlongText = 3.0;
constexpr double tickDistanceAcrossText = 1.75;

double noOffset(double)
{
    return 0.0;
}

double placeOffset(double seconds)
{
    return QDateTime::fromMSecsSinceEpoch(qint64(seconds * 1000.0)).offsetFromUtc();
}

ClockOffset offsetOf(const AxisNumbering &numbering)
{
    return numbering.isUtc ? noOffset : placeOffset;
}

TickRequest requestFor(const AxisNumbering &numbering, double lowest, double highest, double length,
                       TextWidths *widths)
{
    const QFontMetricsF metrics(numbering.font);
    TickRequest request;
    request.scale =
        numbering.kind == AxisNumbering::Kind::Logarithmic ? ScaleKind::Logarithmic : ScaleKind::Linear;
    request.lowest = lowest;
    request.highest = highest;
    request.length = length;
    request.unit = numbering.unit;
    request.interval = numbering.interval;
    request.minorTicks = numbering.minorTicks;
    if (numbering.isAlongText) {
        request.spacing = metrics.height() * tickDistanceAlongText;
        request.gap = metrics.horizontalAdvance(QLatin1Char('0')) * 2.0;
        request.leastSpacing = metrics.height();
        request.extent = [metrics, widths, font = numbering.font](const QString &text) {
            return widths ? widths->of(text, font) : metrics.horizontalAdvance(text);
        };
    } else {
        request.spacing = metrics.height() * tickDistanceAcrossText;
        request.gap = metrics.height() / 4.0;
        request.leastSpacing = metrics.height() + request.gap;
        request.extent = [height = metrics.height()](const QString &) { return height; };
    }
    return request;
}

TickPlan ticksOf(const AxisNumbering &numbering, const TickRequest &request)
{
    switch (numbering.kind) {
    case AxisNumbering::Kind::Time:
        return timeTicks(request, offsetOf(numbering));
    case AxisNumbering::Kind::Logarithmic:
        return logarithmicTicks(request);
    case AxisNumbering::Kind::Linear:
        break;
    }
    return linearTicks(request);
}

} // namespace

TickPlan AxisNumbering::plan(double lowest, double highest, double length, TextWidths *widths) const
{
    TickPlan found = ticksOf(*this, requestFor(*this, lowest, highest, length, widths));
    if (!formatter)
        return found;
    for (int i = 0; i < found.majors.size(); ++i)
        found.texts[i] = formatter->formatValue(found.majors.at(i));
    found.unit = AxisUnit(unit).symbol();
    found.common.clear();
    return found;
}

QString AxisNumbering::text(double value) const
{
    return kind == Kind::Time ? timeText(value, offsetOf(*this)) : shortNumber(value, AxisUnit(unit));
}

QString AxisNumbering::reading(double value, double span) const
{
    if (kind == Kind::Time)
        return readingOfTime(value, span, offsetOf(*this));
    const ScaleKind scale = kind == Kind::Logarithmic ? ScaleKind::Logarithmic : ScaleKind::Linear;
    return numberWithUnit(value, resolutionAt(value, span, scale), AxisUnit(unit));
}

bool AxisNumbering::operator==(const AxisNumbering &other) const
{
    const auto key = [](const AxisNumbering &numbering) {
        return std::tie(numbering.kind, numbering.isUtc, numbering.isAlongText, numbering.font,
                        numbering.unit, numbering.interval, numbering.minorTicks, numbering.formatter);
    };
    return key(*this) == key(other);
}

} // namespace graph
