#pragma once

#include <QList>

namespace graph {

// More ticks than any screen has room for; longer lists are cut here.
constexpr int tickLimit = 10000;

// The spacing for about count ticks over range: a mantissa of the table, the first that is not too small or
// the last one, times a power of ten. 0 for no count, an empty table and a range that is 0 or not finite.
double decimalInterval(double range, int count, const QList<qreal> &mantissas);

// The same with a power of two. 0 for no count and a range that is 0 or not finite.
double binaryInterval(double range, int count);

// The multiples of interval within lowest..highest, each the sum of the one before and the interval, so that
// rounding may cost the last one. Empty for arguments that are not finite; ends at tickLimit and where adding
// has no effect.
QList<qreal> spacedTicks(double lowest, double highest, double interval);

// The positions within lowest..highest, both included, in their own order.
QList<qreal> ticksWithin(const QList<qreal> &positions, double lowest, double highest);

// How many labels of that size go into length when they take ratio of it: truncated, but at least 1 when
// there is any room, and within 0..tickLimit; 0 when not finite.
int tickCount(double length, double labelSize, double ratio);

} // namespace graph
