#pragma once

#include "platform/ui/Export.h"

#include <QString>

namespace graph {

// Both are bounds: of the digits from the first that is not zero on, and of the digits behind the decimal
// point.
struct DigitLimits
{
    int sigDigs = 6;
    int precision = 6;
};

// The decimal exponents of the prefixes that a unit takes, multiples of 3 from -18 (a) to 18 (E).
struct PrefixRange
{
    int lowest = 0;
    int highest = 0;
};

struct NumberText
{
    QString digits;
    QString prefix;
};

// The value in the prefix that leaves 1 to 3 digits before the point after rounding, as far as the range
// allows. Rounds half away from zero, writes no trailing zeros and no "-0". NaN gives "---", infinity U+221E;
// from 1e15 of the largest prefix on the digits are in exponent form. The limits are clamped to 1..17 and
// 0..17.
GRAPH_UI_EXPORT NumberText numberText(double value, DigitLimits limits, PrefixRange range);

} // namespace graph
