#include "view/base/TriangleNode.h"

#include <QSGFlatColorMaterial>
#include <QSGGeometryNode>

namespace graph {

namespace {

std::unique_ptr<QSGGeometryNode> emptyPart()
{
    auto part = std::make_unique<QSGGeometryNode>();
    auto *geometry = new QSGGeometry(QSGGeometry::defaultAttributes_Point2D(), 0);
    geometry->setDrawingMode(QSGGeometry::DrawTriangles);
    part->setGeometry(geometry);
    part->setMaterial(new QSGFlatColorMaterial);
    part->setFlags(QSGNode::OwnsGeometry | QSGNode::OwnsMaterial);
    part->setFlag(QSGNode::OwnedByParent, false);
    return part;
}

} // namespace

TriangleNode::TriangleNode()
{
    setIsRectangular(true);
    setGeometry(&m_edges);
}

TriangleNode::~TriangleNode()
{
    removeAllChildNodes();
}

void TriangleNode::begin(const QSizeF &size)
{
    m_added = 0;
    const QRectF edges(QPointF(), size);
    if (edges == clipRect())
        return;
    setClipRect(edges);
    QSGGeometry::updateRectGeometry(&m_edges, edges);
    markDirty(DirtyGeometry);
}

// A part that is in the scene without any triangle would stay invisible when it gets some.
void TriangleNode::end()
{
    m_parts.resize(m_added);
    for (const std::unique_ptr<QSGGeometryNode> &part : m_parts) {
        if (!part->parent())
            appendChildNode(part.get());
    }
}

QSGGeometry::Point2D *TriangleNode::addPart(int corners, const QColor &color)
{
    if (m_added == m_parts.size())
        m_parts.push_back(emptyPart());
    QSGGeometryNode &part = *m_parts[m_added++];
    auto *material = static_cast<QSGFlatColorMaterial *>(part.material());
    if (material->color() != color) {
        material->setColor(color);
        part.markDirty(DirtyMaterial);
    }
    part.geometry()->allocate(corners);
    part.markDirty(DirtyGeometry);
    return part.geometry()->vertexDataAsPoint2D();
}

void TriangleNode::add(const QVector<QRect> &rectangles, const QColor &color)
{
    if (rectangles.isEmpty())
        return;
    QSGGeometry::Point2D *corner = addPart(6 * rectangles.size(), color);
    for (const QRect &rectangle : rectangles) {
        const auto left = float(rectangle.x());
        const auto top = float(rectangle.y());
        const auto right = float(rectangle.x() + rectangle.width());
        const auto bottom = float(rectangle.y() + rectangle.height());
        (corner++)->set(left, top);
        (corner++)->set(right, top);
        (corner++)->set(left, bottom);
        (corner++)->set(left, bottom);
        (corner++)->set(right, top);
        (corner++)->set(right, bottom);
    }
}

void TriangleNode::add(const std::vector<QPointF> &corners, const QColor &color)
{
    if (corners.empty())
        return;
    QSGGeometry::Point2D *vertex = addPart(int(corners.size()), color);
    for (const QPointF &corner : corners)
        (vertex++)->set(float(corner.x()), float(corner.y()));
}

} // namespace graph
