#pragma once

#include <QVector>

class PlotData;
class ValueAxis;

namespace graph {

// The index of the highest sample, the first of equal ones; -1 without samples.
int highestSample(const PlotData &data);

// The index of the next significant peak to one side of sample `start` among those that `along` shows; -1
// when there is none. `across` is the axis of the y values.
int visiblePeak(bool right, const PlotData &data, const ValueAxis &along, const ValueAxis &across, int start);

// The index in y of the next peak to one side of sample `start`, which takes part itself, within first..last;
// -1 when there is none. `min` and `max` are what can be seen of the y values.
int nextPeak(bool right, const QVector<double> &y, int first, int last, int start, double min, double max);

// The least rise and fall of a peak; 0 for an index outside of y.
double peakTolerance(const QVector<double> &y, int first, int last, double min, double max);

// The lowest and the highest of y from first up to last, which does not count. False for an index outside of
// y.
bool findSpan(const QVector<double> &y, int first, int last, double &min, double &max);

// The index of the sample at a value where `count` samples lie equally spaced from min to max.
int evenlySpacedIndex(double value, int count, double min, double max);

} // namespace graph
