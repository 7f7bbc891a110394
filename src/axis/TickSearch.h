#pragma once

#include <QList>

namespace graph {

// The spacing of about `count` ticks over `range`: a power of ten times the first of the mantissas (ascending, 1..10)
// that is not too small. 0 when there is none: a range that is 0 or not finite, a count below 1, no mantissas.
double decimalInterval(double range, int count, const QList<qreal> &mantissas);

// The same with powers of two. 0 for a range that is 0 or not finite and for a count below 1.
double binaryInterval(double range, int count);

// Multiples of the interval from `lowest` to `highest`, each found by adding the interval to the one before. Empty
// unless all three are finite and the interval is positive; ends after 10 000 ticks, or where adding changes nothing.
QList<qreal> tickValues(double lowest, double highest, double interval);

// The entries of `positions` between lowest and highest, both included, in their own order.
QList<qreal> ticksBetween(const QList<qreal> &positions, double lowest, double highest);

// How many labels of labelSize fit into `ratio` of the length, at least 1 when there is any room; 0..10 000, truncated.
// labelSize must be positive; lengths that are not finite give 0.
int tickCount(double length, double labelSize, double ratio);

} // namespace graph
