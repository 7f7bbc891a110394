#pragma once

#include "common/Export.h"

#include <QString>

namespace graph {

// Texts of a document and units beside each other. In a text that is written from right to left, in part or as a whole,
// "(°C)" would turn into "(C°)" and "-5" into "5-": what is between isolates keeps its own direction. All other
// texts are joined as they are.

// "5 V"; the number alone without a unit.
GRAPH_CHARTS_EXPORT QString withUnitBehind(const QString &number, const QString &unit);

// " (V)", to be written behind a text.
GRAPH_CHARTS_EXPORT QString unitInBrackets(const QString &unit, const QString &text);

} // namespace graph
