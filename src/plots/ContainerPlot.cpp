#include "plots/ContainerPlot.h"

#include "axis/ValueAxis.h"
#include "painters/BasePainter.h"

#include <cmath>
#include <limits>

/*!
    \qmltype ContainerPlot
    \inherits AbstractPlot
    \brief Holds figures such as CrossPainter and TextPainter, declared as its children, and draws them in
    data coordinates: the first child lowest, hidden ones not at all.

    \qmlproperty enumeration ContainerPlot::renderTarget
    The property of Qt's painted items, \c FramebufferObject by default. Unlike other plots this one never
   shifts what it draws.
*/

/*!
    \qmlmethod void ContainerPlot::scheduleRedraw()
    Draws all figures again with the next frame.
*/
void ContainerPlot::scheduleRedraw()
{
    update();
}

// Figures are handed the scales in single precision.
bool ContainerPlot::isPaintable(const graph::PixelMapping &mapping) const
{
    const auto isSinglePrecision = [](double scale) {
        return std::abs(scale) <= std::numeric_limits<float>::max();
    };
    return mapping.isDrawable() && isSinglePrecision(mapping.scaleX()) && isSinglePrecision(mapping.scaleY());
}

double ContainerPlot::framebufferShift() const
{
    return 0.0;
}

void ContainerPlot::paintPlot(const graph::PlotFrame &frame)
{
    QRectF visible = frame.visibleRect;
    graph::PixelMapping mapping = frame.mapping;
    if (!axisY()) {
        // The visible maximum reads 0, yet there is a range of 1 to draw in.
        const graph::PixelScale y(visible.y() + visible.height(), -visibleRangeY(), height());
        mapping = graph::PixelMapping(scaleX(), y, size());
    }
    if ((axisX() && axisX()->isReversed()) || (axisY() && axisY()->isReversed()))
        visible = visible.normalized();
    const QList<QQuickItem *> items = childItems();
    for (QQuickItem *item : items) {
        auto *figure = dynamic_cast<BasePainter *>(item);
        if (figure && figure->isVisible())
            figure->paintWith(mapping, frame.painter, visible);
    }
}

void ContainerPlot::itemChange(ItemChange change, const ItemChangeData &data)
{
    if (change == ItemChildAddedChange) {
        if (auto *figure = dynamic_cast<BasePainter *>(data.item))
            painterAdded(figure);
    } else if (change == ItemChildRemovedChange) {
        if (auto *figure = dynamic_cast<BasePainter *>(data.item))
            painterRemoved(figure);
        else
            // A figure that is being destroyed is only a plain item by now.
            update();
    }
    AbstractPlot::itemChange(change, data);
}

void ContainerPlot::sltOnUpdateNeeded()
{
    update();
}

void ContainerPlot::painterAdded(BasePainter *painter)
{
    connect(painter, SIGNAL(updateNeeded()), this, SLOT(sltOnUpdateNeeded()));
    update();
}

void ContainerPlot::painterRemoved(BasePainter *painter)
{
    disconnect(painter, SIGNAL(updateNeeded()), this, SLOT(sltOnUpdateNeeded()));
    update();
}
