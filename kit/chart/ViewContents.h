#pragma once

#include <QVector>

class AbstractPlot;
class GraphView;
class PlotData;
class QQuickItem;
class ValueAxis;

namespace graph {

// All plots of the view that are on the screen unless something keeps them off it, at any depth, and those
// elsewhere in its window that use its axes, or are overviews of nothing.
QVector<AbstractPlot *> plotsOf(const GraphView &view);

// The elements of the view's lists `axes` and `series`.
QVector<ValueAxis *> axesOf(const GraphView &view);
QVector<PlotData *> seriesOf(const GraphView &view);

// At any depth.
bool isInside(const QQuickItem *item, const QQuickItem &ancestor);

} // namespace graph
