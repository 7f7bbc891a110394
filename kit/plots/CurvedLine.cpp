#include "kit/plots/CurvedLine.h"

#include <cmath>

namespace graph {

namespace {

// Pixels beside the item that a line as wide as it may be reaches over.
constexpr double beside = 64.0;

bool isCurved(const TraceColumn &left, const TraceColumn &right)
{
    return left.samples == 1 && right.samples == 1 && left.x < right.x && areJoined(left, right);
}

double slopeBetween(const TraceColumn &left, const TraceColumn &right)
{
    return (right.first - left.last) / (right.x - left.x);
}

// Of the curve at a sample: level at extremes, else the harmonic mean of the lines at both sides, each weighted
// by the length of the other. That keeps the curve between its samples.
double slopeAt(const std::vector<TraceColumn> &columns, std::size_t i)
{
    const bool isBegin = i == 0 || !isCurved(columns[i - 1], columns[i]);
    const bool isEnd = i + 1 == columns.size() || !isCurved(columns[i], columns[i + 1]);
    const double before = isBegin ? 0.0 : slopeBetween(columns[i - 1], columns[i]);
    const double after = isEnd ? 0.0 : slopeBetween(columns[i], columns[i + 1]);
    if (isBegin || isEnd)
        return isBegin ? after : before;
    if (!(before * after > 0.0))
        return 0.0;
    const double left = columns[i].x - columns[i - 1].x;
    const double right = columns[i + 1].x - columns[i].x;
    return 3.0 * (left + right) / ((2.0 * right + left) / before + (right + 2.0 * left) / after);
}

TraceColumn at(int column, double y)
{
    return {column, 1, double(column), y, y, y, y};
}

} // namespace

SampleSpan withCurveNeighbours(const SampleSpan &samples, const PixelMapping &mapping)
{
    const SampleSpan wide = samples.withNeighbours().withNeighbours();
    // Two so far out would come as one, which has no place.
    const auto areOne = [&](int i) {
        return i >= 0 && i + 1 < wide.size() && std::abs(mapping.column(wide.x(i))) == pixelLimit &&
               std::abs(mapping.column(wide.x(i + 1))) == pixelLimit;
    };
    return wide.mid(areOne(0) ? 1 : 0, wide.size() - (areOne(wide.size() - 2) ? 1 : 0));
}

std::vector<TraceColumn> curvedColumns(const std::vector<TraceColumn> &columns, double width)
{
    std::vector<TraceColumn> curved;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const TraceColumn &left = columns[i];
        curved.push_back(left);
        if (i + 1 == columns.size() || !isCurved(left, columns[i + 1]))
            continue;
        const TraceColumn &right = columns[i + 1];
        const int first = int(std::max(left.column + 1.0, -beside));
        const int last = int(std::min(right.column - 1.0, width + beside));
        const double length = right.x - left.x;
        const double begin = slopeAt(columns, i) * length;
        const double end = slopeAt(columns, i + 1) * length;
        const double rise = right.first - left.last;
        for (int column = first; column <= last; ++column) {
            const double t = (column - left.x) / length;
            const double curve =
                begin + t * (3.0 * rise - 2.0 * begin - end + t * (begin + end - 2.0 * rise));
            curved.push_back(at(column, left.last + t * curve));
        }
    }
    return curved;
}

} // namespace graph
