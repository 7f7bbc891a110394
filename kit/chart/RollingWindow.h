#pragma once

#include "kit/chart/Span.h"

namespace graph {

// What a window of that many seconds shows that rolls with its data: the newest, and until there are enough of them
// the room for what is to come. The data may be empty; isTime: they are seconds since 1970.
Span rollingWindow(const Span &data, double seconds, bool isTime);

} // namespace graph
