#pragma once

#include "kit/plots/TraceMesh.h"

#include <QSGGeometry>
#include <QSGGeometryNode>
#include <QSGNode>
#include <QSGVertexColorMaterial>
#include <QSizeF>

namespace graph {

// The triangles of a trace in the scene graph, cut off at the edges of its item.
class TraceNode : public QSGClipNode
{
public:
    TraceNode();

    void show(const TraceMesh &mesh, const QSizeF &size);

private:
    QSGGeometry m_edges{QSGGeometry::defaultAttributes_Point2D(), 4};
    QSGGeometry m_triangles{QSGGeometry::defaultAttributes_ColoredPoint2D(), 0};
    QSGVertexColorMaterial m_material;
    QSGGeometryNode m_shape;
};

} // namespace graph
