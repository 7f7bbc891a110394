#pragma once

#include "common/Export.h"

#include <QQuickPaintedItem>

namespace graph {

// A painted item that draws as far to the right and down as its render target asks for: plots, planes and cursors,
// which so keep to the same pixels.
class GRAPH_CHARTS_EXPORT ShiftedItem : public QQuickPaintedItem
{
public:
    using QQuickPaintedItem::QQuickPaintedItem;

    // In pixels: 1 into a framebuffer object, 0 into an image. Qt 6 has no such objects and paints every item
    // into an image; the property has no effect.
    virtual double framebufferShift() const;
    // The same where a pixel of the item is one of the target; a scaled framebuffer has nothing to take back.
    double shiftOn(const QPainter &painter) const;

    void paint(QPainter *painter) override;

    // False from the moment on in which an effect has asked for the layer's texture.
    bool canDoWithoutLayer() const { return !m_isTextureAsked; }
    QSGTextureProvider *textureProvider() const override;
    // The node of the layer is no longer.
    void forgetLayer() { QQuickPaintedItem::releaseResources(); }

protected:
    virtual void paintShifted(QPainter *painter) = 0;

private:
    mutable bool m_isTextureAsked = false;
};

} // namespace graph
