#pragma once

#include <QFont>
#include <QHash>
#include <QLineF>
#include <QPen>
#include <QRect>
#include <QSize>
#include <QString>
#include <QVector>

#include <functional>

class QPainter;

namespace graph {

struct PaintedLine
{
    QLineF line;
    QPen pen;

    bool operator==(const PaintedLine &other) const { return line == other.line && pen == other.pen; }
};

} // namespace graph

Q_DECLARE_TYPEINFO(graph::PaintedLine, Q_MOVABLE_TYPE);

namespace graph {

// What a painter draws with one call, or with some that are lines side by side, moved to the origin: what it draws depends
// on nothing else.
struct PaintedMark
{
    QVector<PaintedLine> lines; // none of which covers another
    QString text;               // null where it is lines
    QPointF fraction;           // where the text begins within its pixel
    QFont font;
    QPen pen;   // of the text
    QSize size; // of the part of the picture that it may reach

    bool isText() const { return !text.isNull(); }
    bool isTranslucent() const;
    bool operator==(const PaintedMark &other) const;
    // origin: the place of that part in the painter's coordinates.
    void paint(QPainter *painter, const QPoint &origin) const;
};

struct PlacedMark
{
    PaintedMark mark;
    QPoint origin;
};

} // namespace graph

Q_DECLARE_TYPEINFO(graph::PlacedMark, Q_MOVABLE_TYPE);

namespace graph {

// What is painted in a picture of that size, as far as it is lines and texts, from first to last; lines may reach out of
// the picture. Anything else, and more of it than is worth it, is not told apart: the flag is false then.
struct PaintedFigure
{
    QVector<PlacedMark> marks;
    bool isComplete = true;
};

// What is known of texts that have been painted, so that they are not shaped again.
class PaintedTexts
{
public:
    struct Extent
    {
        double width;
        double ascent;
        double height;
    };

    const Extent *find(const QFont &font, const QString &text) const;
    void add(const QFont &font, const QString &text, const Extent &extent);

private:
    QFont m_font;
    QHash<QString, Extent> m_extents;
};

// Lines of odd widths are taken down as far to the right and down from where they are painted.
PaintedFigure recordedFigure(const QSize &size, PaintedTexts &texts, double oddLineOffset,
                             const std::function<void(QPainter *)> &paint);

} // namespace graph
