#pragma once

#include "common/Export.h"

#include <QString>

class QFontMetrics;
class QFontMetricsF;

namespace graph {

// Texts of a document and units beside each other. In a text that is written from right to left, in part or as a whole,
// "(°C)" would turn into "(C°)" and "-5" into "5-": what is between isolates keeps its own direction. All other
// texts are joined as they are.

// "5 V"; the number alone without a unit.
GRAPH_CHARTS_EXPORT QString withUnitBehind(const QString &number, const QString &unit);

// A unit is a text of the document, of any length: how much room it gets.

// The first 32 characters: longer ones are no units, and would leave no room for what they are the unit of.
QString shortenedUnit(const QString &unit);

// What has room above the numbers of a vertical axis.
QString unitAboveNumbers(const QString &unit, const QFontMetrics &metrics);

// One line, "Level (V)", in so many pixels. The unit stays, as numbers are nothing without it; of one that is longer
// than the line half is the title's.
QString titleWithUnit(const QString &title, const QString &unit, const QFontMetricsF &metrics, double room);

// " (V)", to be written behind a text.
GRAPH_CHARTS_EXPORT QString unitInBrackets(const QString &unit, const QString &text);

} // namespace graph
