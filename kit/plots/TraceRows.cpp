#include "kit/plots/TraceRows.h"

#include <cmath>

namespace graph {

namespace {

// Pixels beside the item that are kept, so that wide lines come in from there.
constexpr double outside = 64.0;

} // namespace

double vertexPixel(double coordinate)
{
    return std::abs(coordinate) < pixelLimit ? std::trunc(coordinate) : coordinate;
}

TraceRows::TraceRows(const std::vector<TraceColumn> &columns, TraceCourse course, const QSize &size)
    : m_rows(std::size_t(std::max(0, size.width())))
    , m_top(-outside)
    , m_bottom(size.height() + outside)
{
    const TraceColumn *previous = nullptr;
    for (const TraceColumn &column : columns) {
        if (previous && course == TraceCourse::Steps && !std::isnan(previous->last))
            addStep(*previous, column);
        else if (previous && areJoined(*previous, column))
            addJoint(*previous, column);
        if (!column.isGap() && column.column >= 0 && column.column < width())
            add(column.column, vertexPixel(column.top), vertexPixel(column.bottom));
        previous = &column;
    }
}

void TraceRows::add(int column, double row, double otherRow)
{
    const double top = std::min(row, otherRow);
    const double bottom = std::max(row, otherRow);
    if (bottom < m_top || top > m_bottom)
        return;
    const Rows rows{int(std::max(top, m_top)), int(std::min(bottom, m_bottom)) + 1};
    Rows &all = m_rows[std::size_t(column)];
    if (all.isEmpty())
        all = rows;
    else
        all.unite(rows);
}

// A column covers the line between its left and its right border; where that passes no further row, the row
// it is in. A row in which two columns meet is the second's, so that a slope of one row a column is one row
// thick.
void TraceRows::addJoint(const TraceColumn &left, const TraceColumn &right)
{
    const double beginX = vertexPixel(left.right);
    const double endX = vertexPixel(right.left);
    const double beginY = vertexPixel(left.last);
    const double endY = vertexPixel(right.first);
    const double sign = endY < beginY ? -1.0 : 1.0;
    const double slope = (endY - beginY) / (endX - beginX);
    const auto rowAt = [&](double x) { return std::floor(sign * (beginY + (x - beginX) * slope) + 0.5); };
    const int first = int(std::max(beginX, 0.0));
    const int last = int(std::min(endX, width() - 1.0));
    for (int column = first; column <= last; ++column) {
        const double from = column == beginX ? sign * beginY : rowAt(column - 0.5);
        const double to = column == endX ? sign * endY : std::max(rowAt(column + 0.5) - 1.0, from);
        add(column, sign * from, sign * to);
    }
}

// Up to a gap as well: the value holds until then.
void TraceRows::addStep(const TraceColumn &left, const TraceColumn &right)
{
    const double beginY = vertexPixel(left.last);
    const double endX = vertexPixel(right.left);
    const int first = int(std::max(vertexPixel(left.right), 0.0));
    const int end = int(std::min(endX, double(width())));
    for (int column = first; column < end; ++column)
        add(column, beginY, beginY);
    if (endX >= 0.0 && endX < width())
        add(int(endX), beginY, std::isnan(right.first) ? beginY : vertexPixel(right.first));
}

} // namespace graph
