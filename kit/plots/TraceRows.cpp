#include "kit/plots/TraceRows.h"

#include <cmath>

namespace graph {

namespace {

// Pixels beside the item that are kept, so that wide lines come in from there.
constexpr int outside = 64;

// The whole number not above, within the limits of pixels. std::floor is a call, one or two for each column.
double rowNotAbove(double y)
{
    const int whole = pixel(y);
    return whole - (y < whole);
}

} // namespace

double vertexPixel(double coordinate)
{
    return std::abs(coordinate) < pixelLimit ? double(int(coordinate)) : coordinate;
}

TraceRows::TraceRows(const std::vector<TraceColumn> &columns, TraceCourse course, const QSize &size)
    : m_rows(std::size_t(std::max(0, size.width())), Rows{pixelLimit + 1, -pixelLimit - 1})
{
    const TraceColumn *previous = nullptr;
    for (const TraceColumn &column : columns) {
        if (previous && course == TraceCourse::Steps)
            addStep(previous->x, previous->last, column.x, column.first);
        else if (previous && course == TraceCourse::StepsToLeft)
            addStep(column.x, column.first, previous->x, previous->last);
        else if (previous && areJoined(*previous, column))
            addJoint(*previous, column);
        if (!column.isGap())
            add(column.column, pixel(column.top), pixel(column.bottom));
        previous = &column;
    }
    for (Rows &rows : m_rows) {
        rows.top = std::max(rows.top, -outside);
        rows.end = std::min(rows.end, size.height() + outside);
        if (rows.isEmpty())
            rows = {};
    }
}

// Of columns outside nothing.
inline void TraceRows::add(int column, int top, int bottom)
{
    if (std::size_t(column) >= m_rows.size())
        return;
    Rows &all = m_rows[std::size_t(column)];
    all.top = std::min(all.top, top);
    all.end = std::max(all.end, bottom + 1);
}

// As addJoint; most columns have a sample in the next one.
inline void TraceRows::addNeighbours(int column, int begin, int end)
{
    // Without a branch, which noise would have the processor guess wrong each second time.
    const int rising = end < begin;
    const int next = (begin + end + 1 - rising) >> 1;
    const int last = next - 1 + 2 * rising;
    add(column, rising ? std::min(last, begin) : begin, rising ? begin : std::max(last, begin));
    add(column + 1, std::min(next, end), std::max(next, end));
}

// A column covers the line between its left and its right border; where that passes no further row, the row
// it is in. A row in which two columns meet is the second's, so that a slope of one row a column is one row
// thick.
inline void TraceRows::addJoint(const TraceColumn &left, const TraceColumn &right)
{
    if (right.column - left.column == 1)
        addNeighbours(left.column, pixel(left.last), pixel(right.first));
    else
        addSlope(left, right);
}

void TraceRows::addSlope(const TraceColumn &left, const TraceColumn &right)
{
    const double beginX = vertexPixel(left.x);
    const double endX = vertexPixel(right.x);
    const double beginY = vertexPixel(left.last);
    const double endY = vertexPixel(right.first);
    const double sign = endY < beginY ? -1.0 : 1.0;
    const double slope = (endY - beginY) / (endX - beginX);
    const int first = int(std::max(beginX, 0.0));
    const int last = int(std::min(endX, width() - 1.0));
    // The first row, in the direction of the line, that is beyond the left border.
    const auto rowAt = [&](int column) {
        return rowNotAbove(sign * (beginY + (column - 0.5 - beginX) * slope) + 0.5);
    };
    double from = first == beginX ? sign * beginY : rowAt(first);
    for (int column = first; column <= last; ++column) {
        const double next = column == endX ? 0.0 : rowAt(column + 1);
        const double to = column == endX ? sign * endY : std::max(next - 1.0, from);
        const auto [top, bottom] = std::minmax({pixel(sign * from), pixel(sign * to)});
        add(column, top, bottom);
        from = next;
    }
}

// Up to a gap as well: the value holds until then.
void TraceRows::addStep(double x, double y, double nextX, double nextY)
{
    if (std::isnan(y) || std::isnan(x) || std::isnan(nextX))
        return;
    const int row = pixel(y);
    const int next = pixel(nextX);
    const int nextRow = std::isnan(nextY) ? row : pixel(nextY);
    const auto [first, last] = std::minmax({pixel(x), next});
    for (int column = std::max(first, 0); column <= std::min(last, width() - 1); ++column) {
        const int other = column == next ? nextRow : row;
        add(column, std::min(row, other), std::max(row, other));
    }
}

} // namespace graph
