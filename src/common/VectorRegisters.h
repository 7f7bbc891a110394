#pragma once

namespace graph {

// To be called before long computations on values, wherever Qt's engine may have filled or copied pixels just
// before. On x86 its quickest code leaves the upper halves of the wide registers in use, and then narrower
// instructions wait for each other: a pass over samples takes two to four times as long. Costs next to
// nothing.
void clearWideRegisters();

} // namespace graph
