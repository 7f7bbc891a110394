#pragma once

#include "common/Export.h"

#include <QString>
#include <QVector>

namespace graph {

// Round numbers along a scale, with labels of as many digits as tell them apart.
struct GRAPH_CHARTS_EXPORT ScaleTicks
{
    QVector<double> values;
    QVector<QString> labels;
    bool isPlain = true;
    int digits = 6; // behind the point in a plain label, else all

    // Of a value between them, with as many digits.
    QString labelOf(double value) const;
};

// At most so many between the two ends, whichever is the greater; none where an end is not finite or both are
// equal.
GRAPH_CHARTS_EXPORT ScaleTicks scaleTicks(double from, double to, int most);

} // namespace graph
