#include "view/base/StrokeShape.h"

#include "raster/StrokeTriangles.h"
#include "view/base/PaintingNode.h"

#include <QPainter>
#include <QQuickWindow>
#include <QSGFlatColorMaterial>
#include <QSGGeometryNode>
#include <QSGImageNode>
#include <QSGTexture>

namespace graph {

namespace {

std::unique_ptr<QSGGeometryNode> emptyShape()
{
    auto shape = std::make_unique<QSGGeometryNode>();
    auto *geometry = new QSGGeometry(QSGGeometry::defaultAttributes_Point2D(), 0);
    geometry->setDrawingMode(QSGGeometry::DrawTriangles);
    shape->setGeometry(geometry);
    shape->setMaterial(new QSGFlatColorMaterial);
    shape->setFlags(QSGNode::OwnsGeometry | QSGNode::OwnsMaterial);
    shape->setFlag(QSGNode::OwnedByParent, false);
    return shape;
}

void cover(QSGGeometry &geometry, const QVector<QRect> &rectangles)
{
    geometry.allocate(6 * rectangles.size());
    QSGGeometry::Point2D *corner = geometry.vertexDataAsPoint2D();
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

void cover(QSGGeometry &geometry, const std::vector<QPointF> &corners)
{
    geometry.allocate(int(corners.size()));
    QSGGeometry::Point2D *vertex = geometry.vertexDataAsPoint2D();
    for (const QPointF &corner : corners)
        (vertex++)->set(float(corner.x()), float(corner.y()));
}

// False where there is nothing to be seen.
bool cover(QSGGeometryNode &shape, const RecordedStrokes::Part &part)
{
    auto *material = static_cast<QSGFlatColorMaterial *>(shape.material());
    if (material->color() != part.color()) {
        material->setColor(part.color());
        shape.markDirty(QSGNode::DirtyMaterial);
    }
    if (part.rectangles.isEmpty()) {
        std::vector<QPointF> corners;
        addStrokeTriangles(corners, part.path, part.pen.widthF());
        cover(*shape.geometry(), corners);
    } else {
        cover(*shape.geometry(), part.rectangles);
    }
    shape.markDirty(QSGNode::DirtyGeometry);
    return shape.geometry()->vertexCount() > 0;
}

} // namespace

StrokeShape::StrokeShape(QQuickWindow *window)
    : m_image(this, window)
{
    setFlag(UsePreprocess);
    m_clip.setIsRectangular(true);
    m_clip.setGeometry(&m_edges);
    m_clip.setFlag(OwnedByParent, false);
}

StrokeShape::~StrokeShape()
{
    m_image.remove();
    removeAllChildNodes();
    m_clip.removeAllChildNodes();
}

void StrokeShape::show(const RecordedStrokes &strokes, const QSize &size, bool smooth)
{
    if (m_size == size && m_smooth == smooth && strokes == m_strokes)
        return;
    m_strokes = strokes;
    m_size = size;
    m_smooth = smooth;
    const QRectF edges(QPointF(), size);
    if (edges != m_clip.clipRect()) {
        m_clip.setClipRect(edges);
        QSGGeometry::updateRectGeometry(&m_edges, edges);
        m_clip.markDirty(DirtyGeometry);
    }
    std::size_t shown = 0;
    for (const RecordedStrokes::Part &part : m_strokes.parts) {
        if (shown == m_shapes.size())
            m_shapes.push_back(emptyShape());
        // A shape that is in the scene without any triangle is forgotten there.
        shown += cover(*m_shapes[shown], part);
    }
    m_shapes.resize(shown);
    for (const std::unique_ptr<QSGGeometryNode> &shape : m_shapes) {
        if (!shape->parent())
            m_clip.appendChildNode(shape.get());
    }
    m_image.remove();
    showTriangles();
}

void StrokeShape::preprocess()
{
    if (isMovedOnly(this) && isOpaque(this))
        showTriangles();
    else if (!m_image.isShown())
        showImage();
}

void StrokeShape::showTriangles()
{
    m_image.remove();
    if (!m_clip.parent())
        appendChildNode(&m_clip);
}

void StrokeShape::showImage()
{
    removeAllChildNodes();
    m_image.show(m_strokes.image(QRect(QPoint(), m_size)), QRectF(QPointF(), m_size),
                 m_smooth ? QSGTexture::Linear : QSGTexture::Nearest);
}

} // namespace graph
