#include "raster/OutlineFill.h"

#include "raster/ColumnCover.h"
#include "raster/LinePieces.h"
#include "raster/LinePoints.h"
#include "raster/RectangleSweep.h"
#include "raster/RowEdge.h"

#include <QPainterPath>

#include <algorithm>
#include <cmath>
#include <vector>

namespace graph {

namespace {

// Edges, sorted by the columns in which they change the winding number of all that lies to their right.
class Edges
{
public:
    explicit Edges(const QRect &clip)
        : m_clip(clip)
        , m_lastOfColumn(clip.width(), none)
    {
    }

    void add(const QPointF &from, const QPointF &to);
    QVector<QRect> rectangles(Qt::FillRule rule) const;

private:
    static constexpr int none = -1;

    // From this row of the column on, downwards, the winding number differs.
    struct Change
    {
        int row;
        int winding;
        int previous; // of the same column
    };

    void addChange(int column, int row, int winding);
    void addRun(qint64 column, const Rows &rows, int winding);
    void advance(std::vector<Change> &profile, int column) const;

    QRect m_clip;
    std::vector<int> m_lastOfColumn;
    std::vector<Change> m_changes;
};

void Edges::add(const QPointF &from, const QPointF &to)
{
    RowEdge edge = rowEdge(GridPoint(from), GridPoint(to), m_clip.top(), m_clip.bottom());
    // Steep edges stay in a column for many rows.
    while (!edge.isEmpty()) {
        const qint64 column = edge.position >> RowEdge::bits;
        qint64 rows = edge.end - edge.row;
        if (edge.step > 0)
            rows = ((column + 1) * (1 << RowEdge::bits) - edge.position + edge.step - 1) / edge.step;
        else if (edge.step < 0)
            rows = (edge.position - column * (1 << RowEdge::bits)) / -edge.step + 1;
        rows = std::min<qint64>(rows, edge.end - edge.row);
        addRun(column, {edge.row, edge.row + int(rows)}, edge.winding);
        edge.row += int(rows);
        edge.position += rows * edge.step;
    }
}

void Edges::addRun(qint64 column, const Rows &rows, int winding)
{
    if (column > m_clip.right())
        return;
    const int inside = int(std::max<qint64>(column, m_clip.left())) - m_clip.left();
    addChange(inside, rows.top, winding);
    addChange(inside, rows.end, -winding);
}

void Edges::addChange(int column, int row, int winding)
{
    m_changes.push_back({row, winding, m_lastOfColumn[column]});
    m_lastOfColumn[column] = int(m_changes.size()) - 1;
}

// profile: the changes down a column, from top to bottom, one a row; moved on from the column before.
void Edges::advance(std::vector<Change> &profile, int column) const
{
    for (int i = m_lastOfColumn[column]; i != none; i = m_changes[i].previous)
        profile.push_back(m_changes[i]);
    std::sort(profile.begin(), profile.end(), [](const Change &a, const Change &b) { return a.row < b.row; });
    auto kept = profile.begin();
    for (auto change = profile.begin(); change != profile.end();) {
        *kept = *change;
        while (++change != profile.end() && change->row == kept->row)
            kept->winding += change->winding;
        if (kept->winding != 0)
            ++kept;
    }
    profile.erase(kept, profile.end());
}

QVector<QRect> Edges::rectangles(Qt::FillRule rule) const
{
    const auto isInside = [rule](int winding) {
        return rule == Qt::WindingFill ? winding != 0 : winding % 2 != 0;
    };
    RectangleSweep sweep;
    std::vector<Change> profile;
    for (int column = 0; column < m_clip.width(); ++column) {
        if (m_lastOfColumn[column] != none)
            advance(profile, column);
        int winding = 0;
        int top = 0;
        for (const Change &change : profile) {
            const bool wasInside = isInside(winding);
            winding += change.winding;
            if (!wasInside)
                top = change.row;
            else if (!isInside(winding))
                sweep.add(m_clip.left() + column, {top, change.row});
        }
    }
    return sweep.takeRectangles();
}

// Adds the outline of a line along points, as wide as the pen: corners are cut off outside and lead through
// the point inside, the ends are flat unless they meet.
class Stroke
{
public:
    Stroke(Edges &edges, double width)
        : m_edges(edges)
        , m_reach(width / 2.0)
    {
    }

    void moveTo(const QPointF &point)
    {
        finish();
        m_start = m_point = point;
    }

    void lineTo(const QPointF &point)
    {
        const QPointF way = point - m_point;
        if (way.isNull())
            return;
        const QPointF side = QPointF(way.y(), -way.x()) * (m_reach / std::hypot(way.x(), way.y()));
        if (m_any)
            addCorner(m_side, side);
        else
            m_firstSide = side;
        m_any = true;
        m_edges.add(m_point + side, point + side);
        m_edges.add(point - side, m_point - side);
        m_side = side;
        m_point = point;
    }

    void finish()
    {
        if (m_any && m_point == m_start) {
            addCorner(m_side, m_firstSide);
        } else if (m_any) {
            m_edges.add(m_start - m_firstSide, m_start + m_firstSide);
            m_edges.add(m_point + m_side, m_point - m_side);
        }
        m_any = false;
    }

private:
    void addCorner(const QPointF &before, const QPointF &after)
    {
        const double turn = before.x() * after.y() - before.y() * after.x();
        addSide(m_point + before, m_point + after, turn < 0.0);
        addSide(m_point - after, m_point - before, turn > 0.0);
    }

    void addSide(const QPointF &from, const QPointF &to, bool isInside)
    {
        if (!isInside) {
            m_edges.add(from, to);
            return;
        }
        m_edges.add(from, m_point);
        m_edges.add(m_point, to);
    }

    Edges &m_edges;
    double m_reach;
    bool m_any = false;
    QPointF m_start;
    QPointF m_point;
    QPointF m_firstSide;
    QPointF m_side; // from the line to its left edge, seen along it
};

// Whether the ways from point to point are not short, compared with the width: pieces of a few pixels touch each other in
// few columns.
bool isSteep(const LinePoints &points, double width)
{
    return points.rowsPassed() * 2.0 >= points.size() * width;
}

} // namespace

QVector<QRect> filledRectangles(const QPainterPath &path, const QPoint &offset, const QRect &clip)
{
    Edges edges(clip);
    QPointF start;
    QPointF last;
    for (int i = 0; i < path.elementCount(); ++i) {
        const QPainterPath::Element element = path.elementAt(i);
        const QPointF point = QPointF(element) + offset;
        if (element.isMoveTo()) {
            edges.add(last, start);
            start = point;
        } else {
            edges.add(last, point);
        }
        last = point;
    }
    edges.add(last, start);
    return edges.rectangles(path.fillRule());
}

QVector<QRect> strokedRectangles(const LinePoints &points, double width, const QPoint &offset,
                                 const QRect &clip)
{
    if (isSteep(points, width) && clip.height() <= ColumnCover::mostRows) {
        ColumnCover cover(clip);
        bool isCovered = true;
        LinePieces(width, [&](const LinePiece &piece) {
            isCovered = isCovered && cover.add(piece);
        }).add(points, offset);
        if (isCovered)
            return cover.rectangles();
    }
    Edges edges(clip);
    Stroke stroke(edges, width);
    points.follow(stroke, offset);
    stroke.finish();
    return edges.rectangles(Qt::WindingFill);
}

} // namespace graph
