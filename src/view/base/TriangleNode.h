#pragma once

#include <QColor>
#include <QRect>
#include <QSGGeometry>
#include <QSGNode>
#include <QSizeF>
#include <QVector>

#include <memory>
#include <vector>

class QSGGeometryNode;

namespace graph {

// Triangles for a graphics processor, in parts of one colour each, the later above the earlier, cut off at the edges of
// their item.
class TriangleNode : public QSGClipNode
{
public:
    TriangleNode();
    ~TriangleNode() override;

    // The parts that are added until end() take the place of those that there were.
    void begin(const QSizeF &size);
    void add(const QVector<QRect> &rectangles, const QColor &color);
    // Three corners for each triangle.
    void add(const std::vector<QPointF> &corners, const QColor &color);
    void end();

private:
    QSGGeometry::Point2D *addPart(int corners, const QColor &color);

    QSGGeometry m_edges{QSGGeometry::defaultAttributes_Point2D(), 4};
    std::vector<std::unique_ptr<QSGGeometryNode>> m_parts;
    std::size_t m_added = 0;
};

} // namespace graph
