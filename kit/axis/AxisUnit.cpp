#include "kit/axis/AxisUnit.h"

#include "kit/axis/UnitText.h"

#include <algorithm>
#include <iterator>

namespace graph {

namespace {

struct KnownUnit
{
    const char *symbol;
    int lowest;
    int highest;
};

// Prefixes that are in use for the unit: nobody reads kiloseconds or megametres.
constexpr KnownUnit knownUnits[] = {
    {"Hz", -6, 12}, {"s", -15, 0},   {"m", -12, 3},     {"V", -15, 6},  {"A", -15, 6},    {"W", -18, 12},
    {"VA", -6, 9},  {"J", -9, 12},   {"Wh", -3, 12},    {"F", -15, 0},  {"H", -12, 0},    {"Pa", -6, 9},
    {"N", -6, 9},   {"g", -9, 3},    {"\u03a9", -6, 9}, {"S", -12, 3},  {"T", -12, 0},    {"C", -15, 3},
    {"K", -6, 0},   {"B", 0, 18},    {"bit", 0, 18},    {"B/s", 0, 18}, {"bit/s", 0, 15}, {"bps", 0, 15},
    {"S/s", 0, 12}, {"Sa/s", 0, 12}, {"eV", -6, 15},
};

constexpr int lowestLetter = -18;
constexpr int highestLetter = 18;

// Units that a document can type, and how they are written.
constexpr const char *writtenUnits[][2] = {{"degC", "\u00b0C"}, {"ohm", "\u03a9"}, {"dBuV", "dB\u00b5V"}};

QString written(const QString &unit)
{
    for (const auto &[typed, symbol] : writtenUnits) {
        if (unit == QLatin1String(typed))
            return QString::fromUtf8(symbol);
    }
    return shortenedUnit(unit);
}

} // namespace

AxisUnit::AxisUnit(const QString &symbol)
    : m_symbol(written(symbol))
{
    const auto isSymbol = [&](const KnownUnit &unit) { return m_symbol == QString::fromUtf8(unit.symbol); };
    const auto known = std::find_if(std::begin(knownUnits), std::end(knownUnits), isSymbol);
    if (known == std::end(knownUnits))
        return;
    m_lowest = known->lowest;
    m_highest = known->highest;
}

int AxisUnit::allowed(int exponent) const
{
    return std::clamp(exponent, m_lowest, m_highest);
}

bool AxisUnit::covers(int exponent) const
{
    constexpr int digits = 3;
    return exponent >= m_lowest - digits && exponent < m_highest + 2 * digits;
}

AxisUnit AxisUnit::withoutPrefixes() const
{
    AxisUnit unit(*this);
    unit.m_lowest = unit.m_highest = 0;
    return unit;
}

QString AxisUnit::prefixed(int exponent) const
{
    return suffix(exponent) + m_symbol;
}

QString AxisUnit::numberSuffix(int exponent)
{
    return exponent < 0 ? QLatin1Char('e') + QString::number(exponent) : suffix(exponent);
}

QString AxisUnit::suffix(int exponent)
{
    static const QString letters = QStringLiteral("afpn\u00b5m kMGTPE");
    if (exponent == 0)
        return QString();
    if (exponent < lowestLetter || exponent > highestLetter)
        return QLatin1Char('e') + QString::number(exponent);
    return QString(letters.at((exponent - lowestLetter) / 3));
}

} // namespace graph
