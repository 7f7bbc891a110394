#include "view/base/ImageChild.h"

#include <QImage>
#include <QQuickWindow>

namespace graph {

void ImageChild::show(const QImage &image, const QRectF &rect, QSGTexture::Filtering filtering)
{
    remove();
    m_texture.reset(m_window->createTextureFromImage(image, QQuickWindow::TextureHasAlphaChannel));
    m_node = m_window->createImageNode();
    m_node->setTexture(m_texture.get());
    m_node->setSourceRect(QRectF(QPointF(), image.size()));
    m_node->setRect(rect);
    m_node->setFiltering(filtering);
    m_parent->appendChildNode(m_node);
}

void ImageChild::remove()
{
    if (!m_node)
        return;
    m_parent->removeChildNode(m_node);
    delete m_node;
    m_node = nullptr;
    m_texture.reset();
}

} // namespace graph
