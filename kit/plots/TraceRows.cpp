#include "kit/plots/TraceRows.h"

#include <cmath>
#include <utility>

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

constexpr Rows nothing{pixelLimit + 1, -pixelLimit - 1};

// Both rows are included.
void include(Rows &all, int top, int bottom)
{
    all.top = std::min(all.top, top);
    all.end = std::max(all.end, bottom + 1);
}

} // namespace

double vertexPixel(double coordinate)
{
    return std::abs(coordinate) < pixelLimit ? double(int(coordinate)) : coordinate;
}

TraceRows::TraceRows(const std::vector<TraceColumn> &columns, TraceCourse course, const QSize &size)
    : m_rows(std::size_t(std::max(0, size.width())), nothing)
{
    if (course == TraceCourse::Straight)
        addJoined(columns);
    else
        addSteps(columns, course);
    for (Rows &rows : m_rows) {
        rows.top = std::max(rows.top, -outside);
        rows.end = std::min(rows.end, size.height() + outside);
        if (rows.isEmpty())
            rows = {};
    }
}

// Of columns outside nothing.
inline void TraceRows::add(int column, const Rows &rows)
{
    if (std::size_t(column) >= m_rows.size())
        return;
    Rows &all = m_rows[std::size_t(column)];
    all.top = std::min(all.top, rows.top);
    all.end = std::max(all.end, rows.end);
}

// A column covers the line between its left and its right border; where that passes no further row, the row
// it is in. A row in which two columns meet is the second's, so that a slope of one row a column is one row
// thick. Most columns have a sample in the next one: what reaches over from there is kept until all of that column is known.
void TraceRows::addJoined(const std::vector<TraceColumn> &columns)
{
    Rows reaching = nothing;
    std::size_t joined = 0;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const TraceColumn &column = columns[i];
        Rows rows = std::exchange(reaching, nothing);
        if (!column.isGap())
            include(rows, pixel(column.top), pixel(column.bottom));
        if (i + 1 < columns.size() && areJoined(column, columns[i + 1])) {
            ++joined;
            if (columns[i + 1].column - column.column == 1)
                joinNeighbours(rows, reaching, pixel(column.last), pixel(columns[i + 1].first));
            else
                addSlope(column, columns[i + 1]);
        }
        add(column.column, rows);
    }
    m_isInOne = joined > 0 && joined + 1 == columns.size();
}

// From a row of one column to a row of the next.
inline void TraceRows::joinNeighbours(Rows &left, Rows &right, int begin, int end)
{
    // Without a branch, which noise would have the processor guess wrong each second time.
    const int rising = end < begin;
    const int next = (begin + end + 1 - rising) >> 1;
    const int last = next - 1 + 2 * rising;
    include(left, rising ? std::min(last, begin) : begin, rising ? begin : std::max(last, begin));
    include(right, std::min(next, end), std::max(next, end));
}

void TraceRows::addSteps(const std::vector<TraceColumn> &columns, TraceCourse course)
{
    const TraceColumn *previous = nullptr;
    for (const TraceColumn &column : columns) {
        if (previous && course == TraceCourse::Steps)
            addStep(previous->x, previous->last, column.x, column.first);
        else if (previous)
            addStep(column.x, column.first, previous->x, previous->last);
        if (!column.isGap())
            add(column.column, {pixel(column.top), pixel(column.bottom) + 1});
        previous = &column;
    }
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
        add(column, {top, bottom + 1});
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
        add(column, {std::min(row, other), std::max(row, other) + 1});
    }
}

} // namespace graph
