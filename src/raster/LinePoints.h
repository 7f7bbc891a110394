#pragma once

#include <QPointF>
#include <QRectF>

#include <vector>

class QPainterPath;

namespace graph {

// The points of one or more lines, as a QPainterPath has them: who looks at each of them several times does it here in a
// fraction of the time.
class LinePoints
{
public:
    LinePoints() = default;
    // Of a path without curves.
    explicit LinePoints(const QPainterPath &path);
    QPainterPath path() const;

    void reserve(int count) { m_points.reserve(std::size_t(count)); }
    // Begins a line, in the place of one that has no other point.
    void moveTo(const QPointF &point);
    // Only after moveTo(). The same point twice is one.
    void lineTo(const QPointF &point);

    int size() const { return int(m_points.size()); }
    QRectF bounds() const;
    // No point is to the left of the one before it.
    bool leadRight() const;
    // Each line has two points, but perhaps the last one. The engine draws them by other rules than lines with joints,
    // and quickly.
    bool areSeparateLines() const;
    // Up and down together.
    double rowsPassed() const;
    // Between the first and the last.
    double width() const { return m_points.empty() ? 0.0 : m_points.back().x() - m_points.front().x(); }

    std::size_t lineCount() const { return m_begins.size(); }
    const QPointF *beginOfLine(std::size_t i) const { return m_points.data() + m_begins[i]; }
    const QPointF *endOfLine(std::size_t i) const
    {
        return m_points.data() + (i + 1 < m_begins.size() ? m_begins[i + 1] : m_points.size());
    }

    // Calls line.moveTo(point) and line.lineTo(point).
    template <typename Line> void follow(Line &line, const QPointF &offset) const
    {
        for (std::size_t i = 0; i < lineCount(); ++i) {
            const QPointF *point = beginOfLine(i);
            line.moveTo(*point++ + offset);
            for (const QPointF *end = endOfLine(i); point != end; ++point)
                line.lineTo(*point + offset);
        }
    }

private:
    std::vector<QPointF> m_points;
    std::vector<std::size_t> m_begins;
};

inline void LinePoints::moveTo(const QPointF &point)
{
    if (!m_begins.empty() && m_begins.back() + 1 == m_points.size()) {
        m_points.back() = point;
        return;
    }
    m_begins.push_back(m_points.size());
    m_points.push_back(point);
}

inline void LinePoints::lineTo(const QPointF &point)
{
    const QPointF &last = m_points.back();
    if (point.x() != last.x() || point.y() != last.y())
        m_points.push_back(point);
}

} // namespace graph
