#pragma once

#include "kit/plots/TraceColumns.h"
#include "raster/RectangleSweep.h"

namespace graph {

// Whether a line goes from sample to sample, or keeps each value until the next one, which is the one at its
// right or, on a reversed axis, at its left.
enum class TraceCourse { Straight, Steps, StepsToLeft };

// The rows that a line of one pixel through all samples covers in each column 0..width-1 of an item: no more
// than one run, empty where there is no line. Ends are clipped some pixels outside of the item.
class GRAPH_CHARTS_EXPORT TraceRows
{
public:
    TraceRows(const std::vector<TraceColumn> &columns, TraceCourse course, const QSize &size);

    int width() const { return int(m_rows.size()); }
    const Rows &at(int column) const { return m_rows[std::size_t(column)]; }
    // Whether all samples are joined by straight lines: none is alone.
    bool isInOne() const { return m_isInOne; }

private:
    void addJoined(const std::vector<TraceColumn> &columns);
    static void joinNeighbours(Rows &left, Rows &right, int begin, int end);
    void addSlope(const TraceColumn &left, const TraceColumn &right);
    void addSteps(const std::vector<TraceColumn> &columns, TraceCourse course);
    void addStep(double x, double y, double nextX, double nextY);
    void add(int column, const Rows &rows);

    std::vector<Rows> m_rows;
    bool m_isInOne = false;
};

// The pixel of an item coordinate as a line's vertex; those far outside keep their fraction and size, so that
// the line to them keeps its slope.
double vertexPixel(double coordinate);

} // namespace graph
