#pragma once

#include "data/PlotPoints.h"
#include "kit/plots/DataExtent.h"

#include <algorithm>
#include <cmath>

namespace graph {

// Points that take both coordinates at once; written one after the other they would be two changes.
class TracePoints : public PlotPoints
{
public:
    using PlotPoints::PlotPoints;

    // The shorter of the two counts. A point without an x is a gap behind the one before.
    void setCoordinates(const QVector<double> &x, const QVector<double> &y)
    {
        QVector<QPointF> points(std::min(x.size(), y.size()));
        for (int i = 0; i < points.size(); ++i) {
            const bool isGap = i > 0 && std::isnan(x.at(i));
            points[i] = isGap ? QPointF(points.at(i - 1).x(), x.at(i)) : QPointF(x.at(i), y.at(i));
        }
        setPoints(points);
    }

    // In any order, unlike plain points.
    bool containsPoint(double x) override
    {
        const MinMax extent = extentX(*this);
        return extent.min <= x && x <= extent.max;
    }
};

} // namespace graph
