#pragma once

#include <QColor>
#include <QFont>
#include <QRectF>
#include <QString>

class QPainter;

namespace graph {

struct AxisLook;

// A line of text along an axis: in the outer row of its margin, or of the plot area where it has no margin.
struct AxisTitle
{
    QString text;
    QString unit; // behind it, in brackets
    QFont font;
    QColor color;

    // Elided where there is too little room. Of an axis that looks like that, beside that plot area; outside: pixels from there to the outer edge of the row.
    void paint(QPainter *painter, const AxisLook &look, const QRectF &plot, double outside) const;
};

} // namespace graph
