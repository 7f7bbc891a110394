#include "platform/ui/NumberText.h"

#include <QByteArray>

#include <algorithm>
#include <cmath>

namespace graph {

namespace {

constexpr int maxDigits = 17;
constexpr int exponentForm = 15;

// digits d1 d2 d3 ... mean d1.d2d3... * 10^exponent; no digits for zero.
struct Decimal
{
    QByteArray digits;
    int exponent = 0;
};

Decimal decimalOf(double magnitude, int digitCount)
{
    const QByteArray text = QByteArray::number(magnitude, 'e', digitCount - 1);
    const int e = text.indexOf('e');
    Decimal decimal{text.left(e), text.mid(e + 1).toInt()};
    decimal.digits.remove(1, 1);
    while (decimal.digits.endsWith('0'))
        decimal.digits.chop(1);
    return decimal;
}

// Rounds once, from the value itself: scaling it first, or rounding twice, would move ties.
Decimal roundedDecimal(double magnitude, const Decimal &exact, DigitLimits limits, int prefixExponent)
{
    const int lastPlace = prefixExponent - limits.precision;
    const int digitCount = std::min(limits.sigDigs, exact.exponent - lastPlace + 1);
    if (digitCount > 0)
        return decimalOf(magnitude, digitCount);
    if (digitCount == 0 && exact.digits.at(0) >= '5')
        return {"1", lastPlace};
    return {};
}

QString digitsText(const Decimal &decimal, int prefixExponent)
{
    QByteArray text = decimal.digits;
    const int wholeDigits = decimal.exponent - prefixExponent + 1;
    if (wholeDigits > exponentForm) {
        if (text.size() > 1)
            text.insert(1, '.');
        text += "e+" + QByteArray::number(wholeDigits - 1);
    } else if (wholeDigits <= 0) {
        text.prepend("0." + QByteArray(-wholeDigits, '0'));
    } else if (wholeDigits < text.size()) {
        text.insert(wholeDigits, '.');
    } else {
        text.append(wholeDigits - text.size(), '0');
    }
    return QString::fromLatin1(text);
}

QString prefixText(int exponent)
{
    static const QString prefixes = QStringLiteral("afpn\u00b5m kMGTPE");
    return exponent == 0 ? QString() : QString(prefixes.at(exponent / 3 + 6));
}

} // namespace

NumberText numberText(double value, DigitLimits limits, PrefixRange range)
{
    if (std::isnan(value))
        return {QStringLiteral("---"), QString()};
    const QString sign = QLatin1String(value < 0 ? "-" : "");
    if (std::isinf(value))
        return {sign + QChar(0x221e), QString()};
    limits = {std::clamp(limits.sigDigs, 1, maxDigits), std::clamp(limits.precision, 0, maxDigits)};

    if (value == 0.0)
        return {QStringLiteral("0"), QString()};

    const double magnitude = std::abs(value);
    const Decimal exact = decimalOf(magnitude, maxDigits);
    int prefix = std::clamp(3 * int(std::floor(exact.exponent / 3.0)), range.lowest, range.highest);
    Decimal decimal = roundedDecimal(magnitude, exact, limits, prefix);
    // Rounding may have carried into the next prefix.
    if (prefix < range.highest && !decimal.digits.isEmpty() && decimal.exponent >= prefix + 3) {
        prefix += 3;
        decimal = roundedDecimal(magnitude, exact, limits, prefix);
    }
    if (decimal.digits.isEmpty())
        return {QStringLiteral("0"), QString()};
    return {sign + digitsText(decimal, prefix), prefixText(prefix)};
}

} // namespace graph
