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
    return left <= right ? QRect(QPoint(left, top), QPoint(right, bottom)) : QRect();
}

QVector<QRect> inkParts(const QImage &picture, QVector<int> rows)
{
    // Of pixels; a part of its own costs about as much as that many empty ones.
    constexpr int mostEmpty = 2000;
    const auto area = [](const QRect &rect) { return qint64(rect.width()) * rect.height(); };
    std::sort(rows.begin(), rows.end());
    QVector<QRect> parts;
    for (int i = 0; i + 1 < rows.size(); ++i) {
        const QRect ink = inkOf(picture, QRect(0, rows.at(i), picture.width(), rows.at(i + 1) - rows.at(i)));
        if (ink.isEmpty())
            continue;
        const QRect joined = parts.isEmpty() ? QRect() : parts.constLast() | ink;
        if (!parts.isEmpty() && area(joined) <= area(parts.constLast()) + area(ink) + mostEmpty)
            parts.last() = joined;
        else
            parts.append(ink);
    }
    return parts;
}

QRect withTransparentRow(const QRect &ink)
{
    return ink.adjusted(0, 0, 0, 1);
}

QImage stampImage(const QImage &picture, const QRect &ink)
{
    return picture.copy(withTransparentRow(ink));
}

} // namespace graph
