#include "kit/axis/UnitText.h"

#include <QFontMetricsF>

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

QString shortenedUnit(const QString &unit)
{
    constexpr int mostCharacters = 32;
    return unit.size() > mostCharacters ? unit.left(mostCharacters - 1) + QChar(0x2026) : unit;
}

QString unitAboveNumbers(const QString &unit, const QFontMetrics &metrics)
{
    constexpr int mostHeights = 8;    // of a line
    constexpr int heightsOfGlyph = 2; // or less
    if (unit.size() * heightsOfGlyph <= mostHeights)
        return unit;
    return metrics.elidedText(unit, Qt::ElideRight, mostHeights * metrics.height());
}

QString titleWithUnit(const QString &title, const QString &unit, const QFontMetricsF &metrics, double room)
{
    const QString text = QString(title).replace(QLatin1Char('\n'), QLatin1Char(' '));
    const double beside = std::max(room / 2.0, room - metrics.horizontalAdvance(text));
    const double brackets = metrics.horizontalAdvance(unitInBrackets(QStringLiteral(" "), text));
    const QString shownUnit = metrics.elidedText(unit, Qt::ElideRight, beside - brackets);
    const QString behind = unitInBrackets(shownUnit, text);
    const QString shown = metrics.elidedText(text, Qt::ElideRight, room - metrics.horizontalAdvance(behind));
    // Without room for both it is the unit.
    const auto isLost = [](const QString &whole, const QString &part) {
        return part != whole && part.size() <= 1;
    };
    const bool hasNoRoom = !unit.isEmpty() && (isLost(text, shown) || isLost(unit, shownUnit));
    return hasNoRoom ? metrics.elidedText(unit, Qt::ElideRight, room) : shown + behind;
}

} // namespace graph
