#pragma once

#include "kit/chart/Finding.h"

#include <functional>

class AbstractPlot;
class GraphView;

namespace graph {

// The first reason for each object of the view. isNew: whether the data of that plot are to be compared with
// what is visible. withStrays: what is in no view of the window, too. Nothing for what is merely empty or hidden.
QVector<Finding> findReasons(const GraphView &view, const std::function<bool(const AbstractPlot &)> &isNew,
                             bool withStrays);

} // namespace graph
