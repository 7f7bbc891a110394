#pragma once

#include "common/Export.h"
#include "kit/plots/TraceRows.h"

#include <QPainterPath>
#include <QRect>
#include <QVector>

namespace graph {

// A line of `lineWidth` pixels along the rows, as disjoint rectangles within `height` rows.
GRAPH_CHARTS_EXPORT QVector<QRect> lineRectangles(const TraceRows &rows, int lineWidth, int height);

// What lies between the rows, these included, and the base row.
GRAPH_CHARTS_EXPORT QVector<QRect> areaRectangles(const TraceRows &rows, int baseRow, int height);

// A bar for each column, as wide as its neighbours leave room for, and the only one as wide as loneRoom does.
GRAPH_CHARTS_EXPORT QVector<QRect> barRectangles(const std::vector<TraceColumn> &columns, int baseRow,
                                                 const QSize &size, double loneRoom);

// A line through the columns' vertices, clipped some way outside of the item. Whole: on whole pixels, else
// between them.
enum class Vertices { Whole, Exact };
GRAPH_CHARTS_EXPORT QPainterPath linePath(const std::vector<TraceColumn> &columns, TraceCourse course,
                                          Vertices vertices, const QSizeF &size);

// Round dots of that many pixels, as disjoint rectangles within the item.
GRAPH_CHARTS_EXPORT QVector<QRect> dotRectangles(const QVector<QPoint> &centers, int diameter,
                                                 const QSize &size);

} // namespace graph
