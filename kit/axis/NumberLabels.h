#pragma once

#include "common/Scale.h"
#include "kit/axis/AxisUnit.h"

#include <QString>

#include <optional>

namespace graph {

// The texts of numbers at multiples of one interval: all with the same prefix, and with as many digits as the
// interval needs, so that no two are alike.
class NumberLabels
{
public:
    // interval: 1, 2 or 5 times a power of ten.
    NumberLabels(double lowest, double highest, double interval, const AxisUnit &unit);

    QString text(double value) const;
    // Of the texts, with its prefix; empty where the texts carry it themselves.
    QString unit() const;
    QString common() const;
    // The decimal exponent of the prefix that is part of the unit; none where texts carry their own.
    std::optional<int> prefix() const
    {
        return m_unit.takesPrefixes() && m_offset == 0.0 ? std::make_optional(m_prefix) : std::nullopt;
    }

private:
    // The exponent of the prefix that suits values of this magnitude.
    int prefixFor(double magnitude, double interval) const;
    int decimalsAt(int prefix, double interval) const;
    void takeOffset(double lowest, double highest);
    // What is left beside the offset, as a multiple of the interval that it is but for rounding.
    double rest(double value) const;
    static QString withUnit(const QString &number, int prefix, const AxisUnit &unit);

    AxisUnit m_unit;       // of the texts
    AxisUnit m_commonUnit; // of the offset
    double m_interval;
    double m_offset = 0.0;
    int m_offsetExponent = 0; // of the power of ten of which it is a multiple
    int m_prefix = 0;
    int m_decimals = 0;
};

// A number with a prefix or exponent of its own, as few digits as say it, and without the unit: "20k".
QString shortNumber(double value, const AxisUnit &unit);

// How far values are apart that a screen shows beside each other, of an axis that shows so much.
double resolutionAt(double value, double span, ScaleKind scale);

// A number and its unit with the digits that tell it from one that differs by `resolution`: "1.234 kHz".
QString numberWithUnit(double value, double resolution, const AxisUnit &unit);

} // namespace graph
