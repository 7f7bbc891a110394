#pragma once

#include "kit/axis/TickPlan.h"

namespace graph {

// Seconds that the clocks of a place are ahead of coordinated universal time, at a time in seconds since 1970.
using ClockOffset = std::function<double(double)>;

// Round times of the clock and the calendar, from millionths of a second to millennia, of values in seconds since 1970.
// The date is written once, at the first tick of a day; the year once, at the first day or month of a year. Of stretches
// much shorter than a second the texts are fractions of it, beside a time that they have in common.
TickPlan timeTicks(const TickRequest &request, const ClockOffset &offset);

// A time as the ticks of an axis are written, with its date, and as finely as a visible span tells times apart:
// "22 Nov 14:05:30".
QString readingOfTime(double seconds, double span, const ClockOffset &offset);

// "2026-11-22 14:05:30.25", for a single time.
QString timeText(double seconds, const ClockOffset &offset);

} // namespace graph
