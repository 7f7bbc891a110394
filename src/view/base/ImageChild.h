#pragma once

#include <QSGImageNode>
#include <QSGTexture>

#include <memory>

class QQuickWindow;

namespace graph {

// The image that is a child of a node for as long as it is shown.
class ImageChild
{
public:
    ImageChild(QSGNode *parent, QQuickWindow *window)
        : m_parent(parent)
        , m_window(window)
    {
    }

    bool isShown() const { return m_node; }
    // rect: in the coordinates of the parent.
    void show(const QImage &image, const QRectF &rect, QSGTexture::Filtering filtering);
    // Before the parent lets go of its children.
    void remove();

private:
    QSGNode *m_parent;
    QQuickWindow *m_window;
    std::unique_ptr<QSGTexture> m_texture;
    QSGImageNode *m_node = nullptr;
};

} // namespace graph
