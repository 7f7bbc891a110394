#include "kit/chart/BarRoom.h"

#include "kit/plots/Trace.h"

#include <algorithm>

namespace graph {

namespace {

// The samples beside x, which is not one of the neighbours itself.
BarNeighbours nearer(BarNeighbours neighbours, const PlotData &data, double x)
{
    const int last = data.size() - 1;
    const int nearest = std::clamp(data.indexOf(x), 0, last);
    for (int i = std::max(nearest - 1, 0); i <= std::min(nearest + 1, last); ++i) {
        const double other = data.x(i);
        if (other < x)
            neighbours.left = std::max(neighbours.left, other);
        else if (other > x)
            neighbours.right = std::min(neighbours.right, other);
    }
    return neighbours;
}

} // namespace

void shareBarRoom(const QList<AbstractPlot *> &plots)
{
    QVector<Trace *> bars;
    for (AbstractPlot *plot : plots) {
        auto *trace = qobject_cast<Trace *>(plot);
        if (trace && trace->style() == Trace::Bars && trace->isVisible() && trace->isValid() &&
            !trace->plotData()->usePointsAsSegments())
            bars.append(trace);
    }
    for (Trace *trace : qAsConst(bars)) {
        if (trace->plotData()->size() != 1)
            continue;
        const double x = trace->plotData()->x(0);
        BarNeighbours neighbours;
        for (const Trace *other : qAsConst(bars)) {
            if (other != trace && other->axisX() == trace->axisX())
                neighbours = nearer(neighbours, *other->plotData(), x);
        }
        trace->setBarNeighbours(neighbours);
    }
}

} // namespace graph
