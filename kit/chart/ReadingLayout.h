#pragma once

#include <QPointF>
#include <QRectF>
#include <QVector>

#include <vector>

namespace graph {

// A label beside the line of a cursor.
struct ReadingLabel
{
    QSizeF size;
    double wantedY = 0.0;
    double topInset = 0.0; // rows to keep free above it
    QPointF place;
};

// Where labels beside a line keep clear of each other and of what else is written there: in one column at a side of the
// line, and in several where one has not enough rows.
class ReadingLayout
{
public:
    // line: its x; area: with the origin in its upper left corner; bottom: of the rows for labels.
    ReadingLayout(double line, const QSizeF &area, double bottom);

    void keepClearOf(const QRectF &obstacle);
    // What is large enough to be passed on a side. Empty for none.
    void setBox(const QRectF &box) { m_box = box; }
    // In the order of their wanted rows.
    void place(std::vector<ReadingLabel> *labels) const;

private:
    // Labels begin or end there.
    struct Column
    {
        double x;
        bool beginsThere;

        double left(double width) const { return beginsThere ? x : x - width; }
    };
    using Columns = QVector<Column>;

    Columns sides(double widest) const;
    QVector<Columns> families(double widest) const;
    Columns beyond(const Columns &columns, double widest) const;
    bool isInside(const Column &column, double widest) const;
    bool areBesideBox(const Columns &columns, double widest) const;
    bool placeNearest(const QVector<Columns> &families, int count, std::vector<ReadingLabel> *labels) const;
    double farthest(const std::vector<ReadingLabel> &labels) const;
    bool placeIn(const Columns &columns, std::vector<ReadingLabel> *labels) const;
    bool placeColumn(const Column &column, const std::vector<ReadingLabel *> &labels) const;
    double below(const ReadingLabel &label, double y) const;
    double above(const ReadingLabel &label, double y) const;

    double m_line;
    QSizeF m_area;
    double m_bottom;
    QRectF m_box;
    QVector<QRectF> m_obstacles; // from the top down
};

} // namespace graph
