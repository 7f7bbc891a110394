#pragma once

#include <vector>

namespace graph {

// So many codes lie together.
constexpr int codeBlock = 16;

// Writes the colours of codes, all of which have one. The next block begins distance codes after the one before; the
// last one may be incomplete.
void writeColors(const unsigned char *codes, int distance, int count, const std::vector<unsigned int> &colors,
                 unsigned int *out);

} // namespace graph
