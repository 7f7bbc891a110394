#include "raster/PixelCentres.h"

#include "raster/PixelFill.h"

#include <QPainter>
#include <QPen>

#include <algorithm>

namespace graph {

namespace {

// Not on OpenGL without a scale, where framebuffers have a way of their own to paint such lines on pixels.
double offsetOfCentres(const QPainter &painter)
{
    if (std::max(painter.pen().width(), 1) % 2 == 0)
        return 0.0;
    const QPaintEngine::Type type = painter.paintEngine()->type();
    const bool isVector =
        type == QPaintEngine::Pdf || type == QPaintEngine::SVG || type == QPaintEngine::Picture;
    return isVector || isScaled(painter) ? 0.5 : 0.0;
}

} // namespace

PixelCentres::PixelCentres(QPainter *painter, const QPoint &across)
    : m_painter(painter)
{
    const double offset = offsetOfCentres(*painter);
    if (offset == 0.0)
        return;
    m_before = painter->worldTransform();
    painter->translate(offset * QPointF(across));
}

PixelCentres::~PixelCentres()
{
    if (m_before)
        m_painter->setWorldTransform(*m_before);
}

bool isScaled(const QPainter &painter)
{
    return painter.deviceTransform().type() > QTransform::TxTranslate;
}

} // namespace graph
