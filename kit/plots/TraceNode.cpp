#include "kit/plots/TraceNode.h"

#include <cstring>

namespace graph {

TraceNode::TraceNode()
{
    setIsRectangular(true);
    setGeometry(&m_edges);
    m_triangles.setDrawingMode(QSGGeometry::DrawTriangles);
    m_shape.setGeometry(&m_triangles);
    m_shape.setMaterial(&m_material);
    m_shape.setFlag(QSGNode::OwnedByParent, false);
}

void TraceNode::show(const TraceMesh &mesh, const QSizeF &size)
{
    const QRectF edges(QPointF(), size);
    if (edges != clipRect()) {
        setClipRect(edges);
        QSGGeometry::updateRectGeometry(&m_edges, edges);
        markDirty(QSGNode::DirtyGeometry);
    }
    const std::vector<TraceMesh::Vertex> &triangles = mesh.triangles();
    static_assert(sizeof(TraceMesh::Vertex) == sizeof(QSGGeometry::ColoredPoint2D), "copied as a whole");
    m_triangles.allocate(int(triangles.size()));
    if (!triangles.empty())
        std::memcpy(m_triangles.vertexData(), triangles.data(), triangles.size() * sizeof(TraceMesh::Vertex));
    m_shape.markDirty(QSGNode::DirtyGeometry);
    // One that is in the scene without any triangle stays invisible when it gets some.
    const bool isShown = m_shape.parent();
    if (!isShown && !triangles.empty())
        appendChildNode(&m_shape);
    else if (isShown && triangles.empty())
        removeChildNode(&m_shape);
}

} // namespace graph
