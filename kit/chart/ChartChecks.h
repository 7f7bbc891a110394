#pragma once

#include <QPointer>
#include <QString>
#include <QVector>

#include <functional>

class AbstractPlot;
class GraphView;
class PlotData;

namespace graph {

// Why something in a chart does not show, and what to write instead.
struct Finding
{
    QPointer<const QObject> about;
    QString text; // continues the name of the object
};

// All plots of the view that are on the screen unless something keeps them off it, at any depth, and those
// elsewhere in its window that use its axes, or are overviews of nothing.
QVector<AbstractPlot *> plotsOf(const GraphView &view);

// The first reason for each object of the view. isNew: whether the data of that plot are to be compared with
// what is visible. Nothing for what is merely empty or hidden.
QVector<Finding> findReasons(const GraphView &view, const std::function<bool(const AbstractPlot &)> &isNew);

} // namespace graph
