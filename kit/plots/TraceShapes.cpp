#include "kit/plots/TraceShapes.h"

#include "common/SafeInteger.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace graph {

namespace {

// Columns from which on a bar leaves a gap to the next one.
constexpr double barShare = 0.75;
// The width in pixels of a bar of which nothing says how wide it is.
constexpr double loneBar = 16.0;

// Pixels around the item in which paths are kept: joints and ends lie beyond any pen's reach.
constexpr double aroundItem = 512.0;

Rows clipped(const Rows &rows, int height)
{
    return {std::max(rows.top, 0), std::min(rows.end, height)};
}

Rows thickened(const Rows &rows, int lineWidth)
{
    const int missing = lineWidth - rows.count();
    if (rows.isEmpty() || missing <= 0)
        return rows;
    const int top = rows.top - (missing + 1) / 2;
    return {top, top + lineWidth};
}

} // namespace

namespace {

// The runs of columns first..last, those that touch as one.
std::vector<Rows> separateRuns(const std::vector<Rows> &rows, int first, int last)
{
    std::vector<Rows> runs;
    for (int column = first; column <= last; ++column) {
        if (!rows[std::size_t(column)].isEmpty())
            runs.push_back(rows[std::size_t(column)]);
    }
    std::sort(runs.begin(), runs.end(), [](const Rows &a, const Rows &b) { return a.top < b.top; });
    std::size_t count = 0;
    for (const Rows &run : runs) {
        if (count > 0 && runs[count - 1].touches(run))
            runs[count - 1].unite(run);
        else
            runs[count++] = run;
    }
    runs.resize(count);
    return runs;
}

} // namespace

// Each column shows the strokes whose width reaches it; nearly always these are one run of rows.
QVector<QRect> lineRectangles(const TraceRows &rows, int lineWidth, int height)
{
    std::vector<Rows> thick(std::size_t(rows.width()));
    for (int column = 0; column < rows.width(); ++column)
        thick[std::size_t(column)] = clipped(thickened(rows.at(column), lineWidth), height);

    RectangleSweep sweep;
    const int before = lineWidth / 2;
    const int after = lineWidth - 1 - before;
    for (int column = 0; column < rows.width(); ++column) {
        const int first = std::max(0, column - after);
        const int last = std::min(rows.width() - 1, column + before);
        Rows all = thick[std::size_t(first)];
        bool isOne = true;
        for (int c = first + 1; c <= last && isOne; ++c) {
            const Rows &run = thick[std::size_t(c)];
            if (run.isEmpty())
                continue;
            isOne = all.isEmpty() || all.touches(run);
            if (all.isEmpty())
                all = run;
            else
                all.unite(run);
        }
        if (isOne) {
            sweep.add(column, all);
            continue;
        }
        for (const Rows &run : separateRuns(thick, first, last))
            sweep.add(column, run);
    }
    return sweep.takeRectangles();
}

QVector<QRect> areaRectangles(const TraceRows &rows, int baseRow, int height)
{
    RectangleSweep sweep;
    for (int column = 0; column < rows.width(); ++column) {
        Rows run = rows.at(column);
        if (run.isEmpty())
            continue;
        run.unite({baseRow, baseRow});
        sweep.add(column, clipped(run, height));
    }
    return sweep.takeRectangles();
}

QVector<QRect> barRectangles(const std::vector<TraceColumn> &columns, int baseRow, const QSize &size,
                             double loneRoom)
{
    QVector<QRect> bars;
    const auto center = [&](std::size_t i) { return columns[i].x; };
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const TraceColumn &column = columns[i];
        if (column.isGap())
            continue;
        double room = loneRoom;
        if (i > 0)
            room = std::min(room, center(i) - center(i - 1));
        if (i + 1 < columns.size())
            room = std::min(room, center(i + 1) - center(i));
        const int width = std::isfinite(room)
                              ? std::max(1, int(std::min(room * barShare, 2.0 * size.width())))
                              : int(loneBar);
        Rows rows{pixel(column.top), pixel(column.bottom) + 1};
        rows.unite({baseRow, baseRow});
        rows = clipped(rows, size.height());
        const int half = width / 2;
        const int edge = pixel(std::trunc(center(i)) - half);
        const int left = std::max(edge, 0);
        const int end = std::min(edge + width, size.width());
        if (left < end && !rows.isEmpty())
            bars.append(QRect(left, rows.top, end - left, rows.count()));
    }
    return bars;
}

namespace {

// Adds lines to a path as far as they are near the item. What is far above or below runs along the limit
// instead, so that an area below the line keeps its columns.
class NearPath
{
public:
    explicit NearPath(const QSizeF &size)
        : m_near(QRectF(QPointF(), size).adjusted(-aroundItem, -aroundItem, aroundItem, aroundItem))
    {
    }

    void moveTo(const QPointF &point)
    {
        m_at = point;
        m_isOpen = false;
    }

    void lineTo(const QPointF &point)
    {
        QPointF begin = m_at;
        QPointF end = point;
        m_at = point;
        if (std::max(begin.x(), end.x()) < m_near.left() || std::min(begin.x(), end.x()) > m_near.right()) {
            m_isOpen = false;
            return;
        }
        const QPointF whole[] = {begin, end};
        for (QPointF *cut : {&begin, &end}) {
            if (cut->x() < m_near.left())
                *cut = crossingX(whole[0], whole[1], m_near.left());
            else if (cut->x() > m_near.right())
                *cut = crossingX(whole[0], whole[1], m_near.right());
        }
        if (!m_isOpen)
            m_path.moveTo(limited(begin));
        for (const double limit : begin.y() < end.y()
                                      ? std::array<double, 2>{m_near.top(), m_near.bottom()}
                                      : std::array<double, 2>{m_near.bottom(), m_near.top()}) {
            if ((begin.y() < limit && limit < end.y()) || (end.y() < limit && limit < begin.y()))
                m_path.lineTo(crossingY(begin, end, limit));
        }
        m_path.lineTo(limited(end));
        m_isOpen = end == point;
    }

    QPainterPath path() const { return m_path; }

private:
    static QPointF crossingX(const QPointF &a, const QPointF &b, double x)
    {
        return {x, a.y() + (b.y() - a.y()) * ((x - a.x()) / (b.x() - a.x()))};
    }
    static QPointF crossingY(const QPointF &a, const QPointF &b, double y)
    {
        return {a.x() + (b.x() - a.x()) * ((y - a.y()) / (b.y() - a.y())), y};
    }
    QPointF limited(const QPointF &point) const
    {
        return {point.x(), std::min(std::max(point.y(), m_near.top()), m_near.bottom())};
    }

    QRectF m_near;
    QPainterPath m_path;
    QPointF m_at;
    bool m_isOpen = false;
};

// The line through columns one after the other; placed(x, y): the vertex at item coordinates.
template <typename Placed>
void addColumn(NearPath &path, const TraceColumn *previous, const TraceColumn &column, TraceCourse course,
               const Placed &placed)
{
    const bool isJoined = previous && areJoined(*previous, column);
    const bool hasPlace = previous && !std::isnan(previous->x) && !std::isnan(column.x);
    // Up to a gap as well: the value holds until then.
    if (course == TraceCourse::Steps && hasPlace && !std::isnan(previous->last))
        path.lineTo(placed(column.x, previous->last));
    const bool isHeldToLeft = course == TraceCourse::StepsToLeft && hasPlace && !std::isnan(column.first);
    if (isHeldToLeft && isJoined)
        path.lineTo(placed(previous->x, column.first));
    else if (isHeldToLeft)
        path.moveTo(placed(previous->x, column.first));
    if (isJoined || isHeldToLeft)
        path.lineTo(placed(column.x, column.first));
    else if (!column.isGap())
        path.moveTo(placed(column.x, std::isnan(column.first) ? column.top : column.first));
}

} // namespace

QPainterPath linePath(const std::vector<TraceColumn> &columns, TraceCourse course, Vertices vertices,
                      const QSizeF &size)
{
    NearPath path(size);
    const auto placed = [vertices](double x, double y) {
        // Exactly there a line is, in the middle, where the pixels of whole ones are.
        return vertices == Vertices::Whole ? QPointF(vertexPixel(x), vertexPixel(y)) : QPointF(x, y);
    };
    const TraceColumn *previous = nullptr;
    for (const TraceColumn &column : columns) {
        addColumn(path, previous, column, course, placed);
        if (column.samples > 1 && !column.isGap()) {
            path.lineTo(placed(column.x, column.top));
            path.lineTo(placed(column.x, column.bottom));
            if (!std::isnan(column.last))
                path.lineTo(placed(column.x, column.last));
        }
        previous = &column;
    }
    return path.path();
}

namespace {

// The rows of a round dot around row 0, column by column from column -diameter / 2 on.
std::vector<Rows> dotRows(int diameter)
{
    std::vector<Rows> rows(static_cast<std::size_t>(diameter));
    const double radius = diameter / 2.0;
    const int odd = diameter % 2;
    for (int column = 0; column < diameter; ++column) {
        const double x = column + 0.5 - radius;
        const int half = int(std::floor(std::sqrt(radius * radius - x * x) - 0.5 * odd + 0.5));
        rows[std::size_t(column)] = {-half, half + odd};
    }
    return rows;
}

} // namespace

// Dots overlap, and where there are many they cover few pixels each of their own, so they are drawn as one
// shape.
QVector<QRect> dotRectangles(const QVector<QPoint> &centers, int diameter, const QSize &size)
{
    const std::vector<Rows> dot = dotRows(diameter);
    std::vector<std::vector<Rows>> runs(std::size_t(std::max(0, size.width())));
    for (const QPoint &center : centers) {
        for (int i = 0; i < diameter; ++i) {
            const int column = center.x() - diameter / 2 + i;
            const Rows &rows = dot[std::size_t(i)];
            const Rows run = clipped({center.y() + rows.top, center.y() + rows.end}, size.height());
            if (column >= 0 && column < size.width() && !run.isEmpty())
                runs[std::size_t(column)].push_back(run);
        }
    }
    RectangleSweep sweep;
    for (int column = 0; column < size.width(); ++column) {
        const std::vector<Rows> &own = runs[std::size_t(column)];
        for (const Rows &run : separateRuns(own, 0, int(own.size()) - 1))
            sweep.add(column, run);
    }
    return sweep.takeRectangles();
}

} // namespace graph
