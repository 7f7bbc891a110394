#pragma once

#include "common/Export.h"
#include "view/base/AbstractPlot.h"

class BasePainter;

// Draws nothing of its own: paints the figures among its child items into one surface, with its own mapping.
class GRAPH_CHARTS_EXPORT ContainerPlot : public AbstractPlot
{
    Q_OBJECT

public:
    using AbstractPlot::AbstractPlot;

    double framebufferShift() const override;

    Q_INVOKABLE void scheduleRedraw();

protected:
    bool isPaintable(const graph::PixelMapping &mapping) const override;
    void paintPlot(const graph::PlotFrame &frame) override;
    void itemChange(ItemChange change, const ItemChangeData &data) override;

private slots:
    void sltOnUpdateNeeded();

private:
    void painterAdded(BasePainter *painter);
    void painterRemoved(BasePainter *painter);
};
