#include "raster/LinePoints.h"

#include <QPainterPath>

#include <algorithm>
#include <cmath>

namespace graph {

LinePoints::LinePoints(const QPainterPath &path)
{
    const int count = path.elementCount();
    m_points.reserve(std::size_t(count));
    for (int i = 0; i < count; ++i) {
        const QPainterPath::Element &element = path.elementAt(i);
        if (element.isMoveTo())
            m_begins.push_back(m_points.size());
        m_points.push_back(element);
    }
}

QPainterPath LinePoints::path() const
{
    QPainterPath path;
    path.reserve(size());
    follow(path, QPointF());
    return path;
}

QRectF LinePoints::bounds() const
{
    if (m_points.empty())
        return {};
    QPointF low = m_points.front();
    QPointF high = low;
    for (const QPointF &point : m_points) {
        low = QPointF(std::min(low.x(), point.x()), std::min(low.y(), point.y()));
        high = QPointF(std::max(high.x(), point.x()), std::max(high.y(), point.y()));
    }
    return {low, high};
}

bool LinePoints::leadRight() const
{
    return std::is_sorted(m_points.begin(), m_points.end(),
                          [](const QPointF &a, const QPointF &b) { return a.x() < b.x(); });
}

bool LinePoints::areSeparateLines() const
{
    if (m_begins.size() != (m_points.size() + 1) / 2)
        return false;
    for (std::size_t i = 0; i < m_begins.size(); ++i) {
        if (m_begins[i] != 2 * i)
            return false;
    }
    return true;
}

double LinePoints::rowsPassed() const
{
    double rows = 0.0;
    for (std::size_t i = 0; i < lineCount(); ++i) {
        const QPointF *end = endOfLine(i);
        for (const QPointF *point = beginOfLine(i) + 1; point < end; ++point)
            rows += std::abs(point->y() - (point - 1)->y());
    }
    return rows;
}

} // namespace graph
