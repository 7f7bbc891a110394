#include "platform/ui/UnitFormatter.h"

#include <cmath>
#include <limits>

namespace {

struct Unit
{
    const char *name = "";
    const char *symbol = "";
    graph::PrefixRange prefixes;
};

// Prefixes are those in use for the unit: nobody reads kiloseconds or megametres, and there are no fractions
// of a bit.
constexpr Unit units[] = {
    {"Hz", "Hz", {-6, 12}},
    {"s", "s", {-15, 0}},
    {"m", "m", {-12, 3}},
    {"V", "V", {-15, 6}},
    {"A", "A", {-15, 6}},
    {"W", "W", {-18, 12}},
    {"ohm", "\u03a9", {-6, 12}},
    {"bit/s", "bit/s", {0, 15}},
    {"B", "B", {0, 18}},
    {"count", "", {0, 12}},
    {"dB", "dB", {}},
    {"dBm", "dBm", {}},
    {"dBmV", "dBmV", {}},
    {"dBuV", "dB\u00b5V", {}},
    {"dB/km", "dB/km", {}},
    {"%", "%", {}},
    {"degC", "\u00b0C", {}},
    {"ppm", "ppm", {}},
};

} // namespace

UnitFormatter::UnitFormatter(const QString &type, const QString &symbol, graph::PrefixRange range)
    : m_type(type)
    , m_symbol(symbol)
    , m_range(range)
{
}

UnitFormatter *UnitFormatter::create(const QString &unitName)
{
    for (const Unit &unit : units) {
        if (unitName == QLatin1String(unit.name))
            return new UnitFormatter(unitName, QString::fromUtf8(unit.symbol), unit.prefixes);
    }
    return nullptr;
}

QString UnitFormatter::formatValue(const QVariant &value) const
{
    bool isNumber = false;
    const double number = value.toDouble(&isNumber);
    return text(isNumber ? number : std::numeric_limits<double>::quiet_NaN(), m_symbol);
}

QString UnitFormatter::text(double value, const QString &symbol) const
{
    const graph::NumberText number = graph::numberText(value, m_limits, m_range);
    // What is no value has no unit.
    if (std::isnan(value))
        return number.digits;
    // A count has a prefix but no unit to be written apart.
    return symbol.isEmpty() ? number.digits + number.prefix
                            : number.digits + QLatin1Char(' ') + number.prefix + symbol;
}
