#include "view/base/StrokeShape.h"

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

void cover(QSGGeometryNode &shape, const QVector<QRect> &rectangles, const QColor &color)
{
    auto *material = static_cast<QSGFlatColorMaterial *>(shape.material());
    if (material->color() != color) {
        material->setColor(color);
        shape.markDirty(QSGNode::DirtyMaterial);
    }
    shape.geometry()->allocate(6 * rectangles.size());
    QSGGeometry::Point2D *corner = shape.geometry()->vertexDataAsPoint2D();
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
    shape.markDirty(QSGNode::DirtyGeometry);
}

} // namespace

StrokeShape::StrokeShape(QQuickWindow *window)
    : m_window(window)
{
    setFlag(UsePreprocess);
}

StrokeShape::~StrokeShape()
{
    removeImage();
    removeAllChildNodes();
}

void StrokeShape::show(const RecordedStrokes &strokes, const QSize &size, bool smooth)
{
    if (m_size == size && m_smooth == smooth && strokes == m_strokes)
        return;
    m_strokes = strokes;
    m_size = size;
    m_smooth = smooth;
    std::size_t shown = 0;
    for (const RecordedStrokes::Part &part : m_strokes.parts) {
        const QVector<QRect> pixels = part.coveredPixels(m_size);
        // A shape that is in the scene without any triangle is forgotten there.
        if (pixels.isEmpty())
            continue;
        if (shown == m_shapes.size())
            m_shapes.push_back(emptyShape());
        cover(*m_shapes[shown++], pixels, part.color());
    }
    m_shapes.resize(shown);
    removeImage();
    showTriangles();
}

void StrokeShape::preprocess()
{
    if (isMovedOnly(this) && isOpaque(this))
        showTriangles();
    else if (!m_image)
        showImage();
}

void StrokeShape::showTriangles()
{
    removeImage();
    for (const std::unique_ptr<QSGGeometryNode> &shape : m_shapes) {
        if (!shape->parent())
            appendChildNode(shape.get());
    }
}

void StrokeShape::showImage()
{
    removeAllChildNodes();
    m_texture.reset(m_window->createTextureFromImage(m_strokes.image(QRect(QPoint(), m_size)),
                                                     QQuickWindow::TextureHasAlphaChannel));
    m_image = m_window->createImageNode();
    m_image->setTexture(m_texture.get());
    m_image->setSourceRect(QRectF(QPointF(), m_size));
    m_image->setRect(QRectF(QPointF(), m_size));
    m_image->setFiltering(m_smooth ? QSGTexture::Linear : QSGTexture::Nearest);
    appendChildNode(m_image);
}

void StrokeShape::removeImage()
{
    if (!m_image)
        return;
    removeChildNode(m_image);
    delete m_image;
    m_image = nullptr;
    m_texture.reset();
}

} // namespace graph
