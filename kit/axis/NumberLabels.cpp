#include "kit/axis/NumberLabels.h"

#include "kit/axis/UnitText.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace graph {

namespace {

// Nobody reads more digits than that; what all labels share is then written once.
constexpr int mostDigits = 7;
// Without a unit that takes prefixes, numbers are written out up to here.
constexpr int mostWholeDigits = 6;
constexpr int mostZeros = 3;

// Rounded down; a power of ten, computed with an error of a few units in the last place, is its own.
int exponentOf(double magnitude)
{
    return int(std::floor(std::log10(magnitude) + 1e-9));
}

int prefixBelow(int exponent)
{
    return 3 * int(std::floor(exponent / 3.0));
}

// Both exact in the decimal sense: a quotient by a power of ten rounds better than a product with its inverse.
double divided(double value, int exponent)
{
    return exponent < 0 ? value * std::pow(10.0, -exponent) : value / std::pow(10.0, exponent);
}

double multiplied(double value, int exponent)
{
    return divided(value, -exponent);
}

AxisUnit unitFor(double magnitude, const AxisUnit &unit)
{
    return unit.covers(exponentOf(magnitude)) ? unit : unit.withoutPrefixes();
}

QString trimmed(QString number)
{
    if (!number.contains(QLatin1Char('.')))
        return number;
    while (number.endsWith(QLatin1Char('0')))
        number.chop(1);
    if (number.endsWith(QLatin1Char('.')))
        number.chop(1);
    return number;
}

QString fixed(double value, int decimals)
{
    // No "-0.0".
    const QString text = QString::number(value, 'f', decimals);
    return text.startsWith(QLatin1Char('-')) && text.toDouble() == 0.0 ? text.mid(1) : text;
}

// Of a reading, by the greater of the value and what it is told apart by: a value near 0 is told in the unit of the
// others. hasPrefix: the unit has one for that exponent.
int prefixOfReading(double value, int exponent, const AxisUnit &unit, bool hasPrefix)
{
    const bool isWrittenOut = !hasPrefix && exponent < mostWholeDigits && exponent >= -mostZeros;
    if (value == 0.0 || isWrittenOut)
        return 0;
    return hasPrefix ? unit.allowed(prefixBelow(exponent)) : prefixBelow(exponent);
}

} // namespace

NumberLabels::NumberLabels(double lowest, double highest, double interval, const AxisUnit &unit)
    : m_unit(unitFor(std::max(std::abs(lowest), std::abs(highest)), unit))
    , m_commonUnit(unit)
    , m_interval(interval)
{
    const double greatest = std::max(std::abs(lowest), std::abs(highest));
    m_prefix = prefixFor(greatest, interval);
    m_decimals = decimalsAt(m_prefix, interval);
    const int wholeDigits = std::max(exponentOf(greatest) - m_prefix + 1, 1);
    if (wholeDigits + m_decimals <= mostDigits)
        return;
    takeOffset(lowest, highest);
    if (m_offset == 0.0)
        return;
    m_commonUnit = unitFor(std::abs(m_offset), unit);
    const double least = std::max({std::abs(lowest - m_offset), std::abs(highest - m_offset), interval});
    m_unit = unitFor(least, unit);
    m_prefix = prefixFor(least, interval);
    m_decimals = decimalsAt(m_prefix, interval);
}

// Round enough to be short and to last while panning: a round number within the range, on both sides of which
// labels count, or else one below it.
void NumberLabels::takeOffset(double lowest, double highest)
{
    m_offsetExponent = int(std::ceil(std::log10(highest - lowest) - 1e-9)) + 1;
    const double within = multiplied(std::ceil(divided(lowest, m_offsetExponent)), m_offsetExponent);
    m_offset = within <= highest
                   ? within
                   : multiplied(std::floor(divided(lowest, m_offsetExponent)), m_offsetExponent);
}

int NumberLabels::prefixFor(double magnitude, double interval) const
{
    const int exponent = exponentOf(magnitude);
    if (!m_unit.takesPrefixes()) {
        const bool isWrittenOut = exponent < mostWholeDigits && exponent >= -mostZeros;
        return isWrittenOut ? 0 : prefixBelow(exponent);
    }
    const int prefix = m_unit.allowed(prefixBelow(exponent));
    // 990, 1000 and 1010 MHz rather than 0.99, 1.00 and 1.01 GHz.
    const int lower = m_unit.allowed(prefix - 3);
    const bool isShorter = decimalsAt(prefix, interval) >= 2 && exponent - lower < 4;
    return isShorter ? lower : prefix;
}

int NumberLabels::decimalsAt(int prefix, double interval) const
{
    return std::max(prefix - exponentOf(interval), 0);
}

double NumberLabels::rest(double value) const
{
    const double rest = value - m_offset;
    const int exponent = exponentOf(m_interval);
    const double mantissa = std::round(divided(m_interval, exponent));
    const double multiple = multiplied(std::round(rest / m_interval) * mantissa, exponent);
    const double rounding = std::numeric_limits<double>::epsilon() * std::abs(m_offset);
    return std::abs(rest - multiple) <= rounding ? multiple : rest;
}

QString NumberLabels::text(double value) const
{
    QString number = fixed(divided(rest(value), m_prefix), m_decimals);
    // No "0e-6".
    const bool isPlainZero = !m_unit.takesPrefixes() && m_prefix != 0 && number.toDouble() == 0.0;
    if (isPlainZero)
        number = QStringLiteral("0");
    const int prefix = isPlainZero ? 0 : m_prefix;
    // Beside a common part in another prefix each says what it counts.
    if (m_offset != 0.0)
        return withUnit(number, prefix, m_unit);
    return m_unit.takesPrefixes() ? number : number + AxisUnit::numberSuffix(prefix);
}

QString NumberLabels::withUnit(const QString &number, int prefix, const AxisUnit &unit)
{
    if (unit.takesPrefixes())
        return withUnitBehind(number, unit.prefixed(prefix));
    return withUnitBehind(number + AxisUnit::numberSuffix(prefix), unit.symbol());
}

QString NumberLabels::unit() const
{
    if (m_offset != 0.0)
        return QString();
    return m_unit.takesPrefixes() ? m_unit.prefixed(m_prefix) : m_unit.symbol();
}

QString NumberLabels::common() const
{
    if (m_offset == 0.0)
        return QString();
    const int exponent = prefixBelow(exponentOf(std::abs(m_offset)));
    const int prefix = m_commonUnit.takesPrefixes() ? m_commonUnit.allowed(exponent) : exponent;
    const int decimals = std::max(prefix - m_offsetExponent, 0);
    return withUnit(trimmed(fixed(divided(m_offset, prefix), decimals)), prefix, m_commonUnit) +
           QLatin1String(" +");
}

double resolutionAt(double value, double span, ScaleKind scale)
{
    constexpr double pixels = 1000.0;
    return (scale == ScaleKind::Logarithmic ? std::abs(value) : span) / pixels;
}

QString numberWithUnit(double value, double resolution, const AxisUnit &unit)
{
    if (!std::isfinite(value))
        return std::isnan(value) ? QStringLiteral("---") : QString::number(value);
    const int exponent =
        exponentOf(std::max({std::abs(value), resolution, std::numeric_limits<double>::min()}));
    const bool hasPrefix = unit.takesPrefixes() && unit.covers(exponent);
    const int prefix = prefixOfReading(value, exponent, unit, hasPrefix);
    constexpr int mostDecimals = 12;
    const int decimals = resolution > 0.0 ? std::clamp(prefix - exponentOf(resolution), 0, mostDecimals) : 6;
    const QString symbol = hasPrefix ? unit.prefixed(prefix) : unit.symbol();
    return withUnitBehind(fixed(divided(value, prefix), decimals) +
                              (hasPrefix ? QString() : AxisUnit::numberSuffix(prefix)),
                          symbol);
}

QString shortNumber(double value, const AxisUnit &unit)
{
    if (value == 0.0)
        return QStringLiteral("0");
    constexpr int digits = 12;
    const int exponent = exponentOf(std::abs(value));
    const bool isWrittenOut = exponent < 3 && exponent >= (unit.takesPrefixes() ? 0 : -mostZeros);
    const int prefix = isWrittenOut ? 0 : prefixBelow(exponent);
    const QString number = trimmed(fixed(divided(value, prefix), digits));
    return number + (unit.takesPrefixes() ? AxisUnit::suffix(prefix) : AxisUnit::numberSuffix(prefix));
}

} // namespace graph
