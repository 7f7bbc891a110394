#pragma once

#include <QString>

namespace graph {

// The unit of an axis, and how numbers in it are shortened.
class AxisUnit
{
public:
    explicit AxisUnit(const QString &symbol);

    // As readings write it: "°C" for "degC".
    const QString &symbol() const { return m_symbol; }
    // Whether prefixes belong to the symbol. Behind a symbol that takes none, or none at all, they are written
    // behind the number.
    bool takesPrefixes() const { return m_lowest < m_highest; }
    // The nearest decimal exponent, a multiple of 3, of a prefix that is in use.
    int allowed(int exponent) const;
    // Whether numbers of this decimal exponent are short with one of them.
    bool covers(int exponent) const;
    AxisUnit withoutPrefixes() const;
    // "MHz" for 6; only for symbols that take prefixes.
    QString prefixed(int exponent) const;
    // Of the differences of numbers in this unit: levels above a reference differ by dB.
    static QString ofDifferences(const QString &unit)
    {
        return unit.startsWith(QLatin1String("dB")) ? QStringLiteral("dB") : unit;
    }
    // Whether numbers in this unit are levels above a reference, as dBm is, of which 0 is no more than the reference:
    // there is no "nothing" that bars could begin at. A difference in dB is none.
    static bool isOfLevels(const QString &unit)
    {
        return unit.startsWith(QLatin1String("dB")) && unit != QLatin1String("dB");
    }
    // What is written before the symbol, or where it takes no prefixes behind the number, for a number that was
    // divided by a power of ten: "M", or "e33" where no letter is known. Without a unit "u" or "m" would say
    // nothing: "e-6".
    static QString suffix(int exponent);
    static QString numberSuffix(int exponent);

private:
    QString m_symbol;
    int m_lowest = 0;
    int m_highest = 0;
};

} // namespace graph
