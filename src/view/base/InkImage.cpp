#include "view/base/InkImage.h"

#include <algorithm>

namespace graph {

QRect inkOf(const QImage &picture, const QRect &part)
{
    int left = part.right() + 1;
    int right = part.left() - 1;
    int top = part.bottom() + 1;
    int bottom = part.top() - 1;
    for (int y = part.top(); y <= part.bottom(); ++y) {
        const QRgb *row = reinterpret_cast<const QRgb *>(picture.constScanLine(y));
        const QRgb *end = row + part.right() + 1;
        const QRgb *first = std::find_if(row + part.left(), end, [](QRgb pixel) { return pixel != 0; });
        if (first == end)
            continue;
        int last = part.right();
        while (row[last] == 0)
            --last;
        left = std::min(left, int(first - row));
        right = std::max(right, last);
        top = std::min(top, y);
        bottom = y;
    }
    return QRect(QPoint(left, top), QPoint(right, bottom));
}

QImage stampImage(const QImage &picture, const QRect &ink)
{
    return picture.copy(ink.adjusted(0, 0, 0, 1));
}

} // namespace graph
