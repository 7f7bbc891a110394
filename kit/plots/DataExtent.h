#pragma once

#include "common/Export.h"
#include "data/MinMax.h"

#include <limits>

class PlotData;

namespace graph {

// How far data reaches, for axes that follow it; either is empty without a finite sample.
struct DataExtent
{
    MinMax x;
    MinMax y;
};

// A plot that knows how far its data reaches, for the chart that chooses the ranges of its axes.
class GRAPH_CHARTS_EXPORT ExtentSource
{
public:
    virtual ~ExtentSource() = default;

    virtual DataExtent dataExtent() const = 0;
    // Of x alone.
    virtual MinMax extentX() const { return dataExtent().x; }
    // Of what lies between two x.
    virtual DataExtent dataExtent(double xMin, double xMax) const = 0;
    // Whether bars or areas begin at the baseline of axisY, which then belongs to the range that shows them.
    virtual bool beginsAtBaseline() const { return false; }
    // How many pixels beyond a sample are drawn with it.
    virtual int reach() const { return 0; }
    // Whether the plot colours all of its extent: room around it would be blank, and a grid below it is covered.
    virtual bool fillsExtent() const { return false; }
};

// Of all samples. After a change of the data the first request reads each of them, later ones take a few
// steps.
GRAPH_CHARTS_EXPORT DataExtent dataExtent(const PlotData &data);

// Of x alone, for which no samples are read where they are in the order of x.
GRAPH_CHARTS_EXPORT MinMax extentX(const PlotData &data);

// Of the samples with xMin <= x <= xMax, whose x are the extent's x.
GRAPH_CHARTS_EXPORT DataExtent dataExtent(const PlotData &data, double xMin, double xMax);

// The x between which a bar is that has no neighbours in its own data; infinite where nothing limits its width.
struct BarNeighbours
{
    double left = -std::numeric_limits<double>::infinity();
    double right = std::numeric_limits<double>::infinity();

    bool operator==(const BarNeighbours &other) const { return left == other.left && right == other.right; }
};

// With the outer halves of the first and the last bar, which are as wide as the others, where the data are bars;
// `ofLone` says how wide the only one is.
DataExtent withHalfBars(DataExtent extent, const PlotData &data, const BarNeighbours &ofLone,
                        bool isLogarithmic);

} // namespace graph
