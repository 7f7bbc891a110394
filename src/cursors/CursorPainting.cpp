#include "cursors/CursorPainting.h"

#include "common/SafeInteger.h"
#include "cursors/CursorDirection.h"
#include "raster/PixelCentres.h"

#include <QColor>
#include <QPainter>
#include <QString>

#include <algorithm>
#include <cstdlib>

namespace graph {

namespace {

constexpr int gap = 5;

// One outside of the item counts as one on its edge.
int shownMarker(int marker, double width)
{
    return std::max(std::min(marker, pixel(width - 1.0)), 0);
}

bool fitsBetween(int cursor, int marker, int textWidth)
{
    return textWidth + 2 * gap + 1 < std::abs(cursor - marker);
}

int centred(int cursor, int marker, int textWidth)
{
    return ((cursor + marker) - (textWidth + 1)) / 2;
}

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
    const int shown = shownMarker(marker, width);
    if (fitsBetween(cursor, shown, textWidth))
        return centred(cursor, shown, textWidth);
    if (cursor + shown >= width)
        return std::min(shown, cursor) - gap - textWidth;
    return std::max(shown, cursor) + gap;
}

int deltaTextBesideMarker(int cursor, int marker, int textWidth, double width)
{
    const int shown = shownMarker(marker, width);
    if (fitsBetween(cursor, shown, textWidth))
        return centred(cursor, shown, textWidth);
    const bool isLeft = shown < cursor;
    const int beyond = isLeft ? shown - gap - textWidth : shown + gap;
    if (beyond >= 0 && beyond + textWidth <= width)
        return beyond;
    return isLeft ? cursor + gap : cursor - gap - textWidth;
}

CursorPainter::CursorPainter(QPainter *painter, const CursorDirection &direction, const QQuickItem &item)
    : m_painter(painter)
    , m_direction(direction)
    , m_width(item.width())
    , m_extent(pixel((item.*direction.extent)()))
    , m_length(pixel((item.*direction.lineLength)() - 1.0))
{
}

void CursorPainter::marker(int place, const QColor &color, bool glows)
{
    const int reach = glows ? 2 : 0;
    for (int distance = -reach; distance <= reach; ++distance) {
        QColor line = color;
        if (distance != 0)
            line.setAlpha(std::abs(distance) == 2 ? 127 : 191);
        m_painter->setPen(line);
        lines(place + distance, place + distance);
    }
    m_painter->setPen(color); // of the distance
}

void CursorPainter::distance(const QString &text, int cursor, int marker, int y, decltype(&deltaTextX) placeX)
{
    const int textWidth = m_painter->fontMetrics().boundingRect(text).width() - 1;
    m_painter->drawText(placeX(cursor, marker, textWidth, m_width), y, text);
}

void CursorPainter::band(int position, int paintedWidth, QColor color)
{
    const CursorBand columns = cursorBand(position, paintedWidth);
    QColor glow = color;
    glow.setAlpha(127);
    color.setAlpha(255);
    m_painter->setPen(glow);
    lines(columns.glowBefore.first, columns.glowBefore.last);
    m_painter->setPen(color);
    lines(columns.core.first, columns.core.last);
    m_painter->setPen(glow);
    lines(columns.glowBehind.first, columns.glowBehind.last);
}

void CursorPainter::lines(int first, int last)
{
    // A band far wider than the item must not cost more than the item. What is only just outside is what the band has
    // inside, too.
    constexpr int beyond = 16;
    const int end = std::min(last, m_extent + beyond);
    const PixelCentres centred(m_painter);
    for (int place = std::max(first, -beyond); place <= end; ++place)
        m_painter->drawLine(m_direction.line(place, m_length));
}

} // namespace graph
