#include "view/base/StrokeShape.h"

#include "raster/StrokeTriangles.h"
#include "view/base/PaintingNode.h"

#include <QQuickWindow>
#include <QSGImageNode>
#include <QSGTexture>

namespace graph {

StrokeShape::StrokeShape(QQuickWindow *window)
    : m_image(this, window)
{
    setFlag(UsePreprocess);
    m_triangles.setFlag(OwnedByParent, false);
}

StrokeShape::~StrokeShape()
{
    m_image.remove();
    removeAllChildNodes();
}

void StrokeShape::show(const RecordedStrokes &strokes, const QSize &size, bool smooth)
{
    if (m_size == size && m_smooth == smooth && strokes == m_strokes)
        return;
    m_strokes = strokes;
    m_size = size;
    m_smooth = smooth;
    m_triangles.begin(size);
    for (const RecordedStrokes::Part &part : m_strokes.parts) {
        if (!part.rectangles.isEmpty()) {
            m_triangles.add(part.rectangles, part.color());
            continue;
        }
        std::vector<QPointF> corners;
        addStrokeTriangles(corners, part.path, part.pen.widthF());
        m_triangles.add(corners, part.color());
    }
    m_triangles.end();
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
    if (!m_triangles.parent())
        appendChildNode(&m_triangles);
}

void StrokeShape::showImage()
{
    removeAllChildNodes();
    m_image.show(m_strokes.image(QRect(QPoint(), m_size)), QRectF(QPointF(), m_size),
                 m_smooth ? QSGTexture::Linear : QSGTexture::Nearest);
}

} // namespace graph
