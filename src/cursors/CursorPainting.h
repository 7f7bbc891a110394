#pragma once

class QColor;
class QPainter;
class QQuickItem;
class QString;

namespace graph {

struct CursorDirection;

// Neighbouring pixel columns, both ends included; none when last < first.
struct PixelStretch
{
    int first;
    int last;
};

// The lines of a cursor: a solid core between two bands of glow.
struct CursorBand
{
    PixelStretch core;
    PixelStretch glowBefore;
    PixelStretch glowBehind;
};

// The columns of a cursor at pixel position with a band of paintedWidth pixels. Above 5 pixels core and glow
// are a third of the width each, cut to whole pixels, and start two thirds before the position; below, the
// core is one line.
CursorBand cursorBand(int position, int paintedWidth);

// The pixel column where the text of the distance between cursor and marker starts: centred between the two
// lines, or, where textWidth pixels do not fit there, beside both on the side with more room in an item of
// width pixels. A marker outside the item counts as one on its edge.
int deltaTextX(int cursor, int marker, int textWidth, double width);

// The same, but where it does not fit between them beside the marker, away from the cursor, or where there is no room for
// it either on the other side of the cursor.
int deltaTextBesideMarker(int cursor, int marker, int textWidth, double width);

// Paints the lines of a cursor and its markers: one pixel wide each, over the whole item. From one side to the other, so
// that what takes them down makes them one image.
class CursorPainter
{
public:
    CursorPainter(QPainter *painter, const CursorDirection &direction, const QQuickItem &item);

    void marker(int place, const QColor &color, bool glows);
    // The text of the distance between cursor and marker, with its base line in row y and where placeX says.
    void distance(const QString &text, int cursor, int marker, int y, decltype(&deltaTextX) placeX);
    void band(int position, int paintedWidth, QColor color);

private:
    void lines(int first, int last);

    QPainter *m_painter;
    const CursorDirection &m_direction;
    double m_width;
    int m_extent;
    int m_length;
};

} // namespace graph
