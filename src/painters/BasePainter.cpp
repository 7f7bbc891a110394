#include "painters/BasePainter.h"

/*!
    \qmltype BasePainter
    \brief What all figures of a ContainerPlot have in common.

    An interface: use CrossPainter, TextPainter and the other figures. Declare them as children of a
    ContainerPlot.

    \qmlsignal BasePainter::updateNeeded()
    The figure looks different now; its container repaints.
*/
BasePainter::BasePainter(QQuickItem *parent)
    // QQuickItem would announce the child to its container before it is a painter.
    : QQuickItem(nullptr)
{
    setParent(parent);
    setParentItem(parent);
}

void BasePainter::paintWith(const graph::PixelMapping &mapping, QPainter *painter, const QRectF &visibleRect)
{
    m_mapping = &mapping;
    paint(painter, visibleRect, static_cast<float>(mapping.scaleX()), static_cast<float>(mapping.scaleY()));
    m_mapping = nullptr;
}

graph::PixelMapping BasePainter::mapping(const QRectF &visibleRect, float scaleX, float scaleY) const
{
    return m_mapping ? *m_mapping : graph::PixelMapping::fromScales(visibleRect, scaleX, scaleY);
}

/*!
    \qmlproperty AbstractPlot BasePainter::plotParent
    The plot whose data and ranges the figure refers to; null by default. Needed only where a type says so.
*/
void BasePainter::setPlotParent(AbstractPlot *plot)
{
    if (m_plotParent == plot)
        return;
    if (m_plotParent)
        disconnect(m_plotParent, nullptr, this, nullptr);
    m_plotParent = plot;
    if (plot)
        connect(plot, SIGNAL(destroyed()), this, SIGNAL(plotParentChanged()));
    emit plotParentChanged();
}

void BasePainter::itemChange(ItemChange change, const ItemChangeData &data)
{
    // The container skips hidden figures, but hears nothing of their visibility otherwise.
    if (change == ItemVisibleHasChanged)
        emit updateNeeded();
    QQuickItem::itemChange(change, data);
}
