#include "kit/axis/UnitText.h"

#include <algorithm>

namespace graph {

namespace {

bool isRightToLeft(const QChar &character)
{
    switch (character.direction()) {
    case QChar::DirR:
    case QChar::DirAL:
    case QChar::DirAN:
    case QChar::DirRLE:
    case QChar::DirRLO:
    case QChar::DirRLI:
        return true;
    default:
        return false;
    }
}

bool hasRightToLeft(const QString &text)
{
    return std::any_of(text.begin(), text.end(), isRightToLeft);
}

QString isolated(const QString &text)
{
    constexpr QChar firstStrongIsolate(0x2068);
    constexpr QChar popIsolate(0x2069);
    return firstStrongIsolate + text + popIsolate;
}

} // namespace

QString withUnitBehind(const QString &number, const QString &unit)
{
    if (unit.isEmpty())
        return number;
    return (hasRightToLeft(unit) ? isolated(number) : number) + QLatin1Char(' ') + unit;
}

QString unitInBrackets(const QString &unit, const QString &text)
{
    if (unit.isEmpty())
        return {};
    const bool isMixed = hasRightToLeft(text) || hasRightToLeft(unit);
    return QLatin1String(" (") + (isMixed ? isolated(unit) : unit) + QLatin1Char(')');
}

} // namespace graph
