#include "cursors/CursorPainting.h"

#include "common/SafeInteger.h"

#include <algorithm>
#include <cstdlib>

namespace graph {

namespace {

constexpr int gap = 5;

} // namespace

CursorBand cursorBand(int position, int paintedWidth)
{
    const int third = std::min(paintedWidth, pixelLimit) / 3;
    const bool wide = paintedWidth > 5;
    const int start = wide ? position - third : position;
    const int end = start + (wide ? third : 1);
    return {{start, end - 1}, {start - third, start - 1}, {end, end + third - 1}};
}

int deltaTextX(int cursor, int marker, int textWidth, double width)
{
    const int shown = std::max(std::min(marker, pixel(width - 1.0)), 0);
    if (textWidth + 2 * gap + 1 < std::abs(cursor - shown))
        return ((cursor + shown) - (textWidth + 1)) / 2;
    if (cursor + shown >= width)
        return std::min(shown, cursor) - gap - textWidth;
    return std::max(shown, cursor) + gap;
}

} // namespace graph
