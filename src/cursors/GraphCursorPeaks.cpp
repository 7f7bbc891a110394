// The part of the cursor that searches for peaks in the primary plot's data.

#include "axis/ValueAxis.h"
#include "common/SafeInteger.h"
#include "cursors/GraphCursor.h"
#include "cursors/PeakAnalysis.h"
#include "data/PlotData.h"
#include "view/base/AbstractPlot.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace {

// The index in y of the next peak to one side of sample `start`, which takes part itself, within first..last;
// -1 when there is none.
int peakBeside(bool right, const QVector<double> &y, int first, int last, int start, double tolerance)
{
    const int begin = right ? start : first;
    const long count = (right ? last : start) - begin + 1L;
    if (count >= PeakAnalysis::countLimit)
        return -1;
    std::vector<double> x(static_cast<std::size_t>(count));
    std::iota(x.begin(), x.end(), 0.0);
    long peak = -1;
    double peakX = 0.0;
    double peakY = 0.0;
    PeakAnalysis analysis;
    if (!analysis.getNextPeak(right, tolerance, count, x.data(), y.constData() + begin, peak, peakX, peakY))
        return -1;
    return begin + static_cast<int>(peak);
}

} // namespace

/*!
    \qmlmethod void GraphCursor::setPeak()
    Moves the cursor to the highest sample of the primary plot's data, the first of equal ones.
*/
void GraphCursor::setPeak()
{
    const PlotData *data = primarySeries();
    if (!data || data->size() < 1)
        return;
    int best = 0;
    double top = data->y(0);
    const int size = data->size();
    for (int i = 1; i < size; ++i) {
        const double y = data->y(i);
        if (y > top || std::isnan(top)) {
            top = y;
            best = i;
        }
    }
    setPosIndex(best);
}

/*!
    \qmlmethod void GraphCursor::setPeakLeft()
    Moves the cursor to a peak on its left in the visible range, and stays when the search finds none.

    The search looks for a summit that rises and falls by a tolerance: a tenth of the data's span in the visible range, or
    of the visible span of the vertical axis if that is smaller. It does not find every such summit. First it straightens
    what is smaller than the tolerance, starting at the cursor; narrow peaks and close ones can lose height by that and be
    passed over, and the way left can stop at other peaks than the way right. It takes the samples as equally spaced over
    the whole range of the axis, whatever their x: points at uneven places, and data that cover only a part of the axis,
    are searched in a stretch that is not the visible one. And it ends at a missing sample (NaN).

    Use it to step through clear peaks over noise while the user looks on. Do not rely on it to count peaks, to find all
    of them or to decide a measurement; go through the samples for that.
*/
void GraphCursor::setPeakLeft()
{
    const int index = findPeak(PeakLeft);
    if (index != -1)
        setPosIndex(index);
}

/*!
    \qmlmethod void GraphCursor::setPeakRight()
    The same on its right; see setPeakLeft for what the search finds.
*/
void GraphCursor::setPeakRight()
{
    const int index = findPeak(PeakRight);
    if (index != -1)
        setPosIndex(index);
}

/*!
    \qmlmethod int GraphCursor::findPeak(PeakType type)
    The index of the sample that setPeakLeft (type \c GraphCursor.PeakLeft) or setPeakRight (type
    \c GraphCursor.PeakRight) would move to, -1 if the search finds none.
*/
int GraphCursor::findPeak(PeakType type) const
{
    const AbstractPlot *plot = primaryPlot();
    const PlotData *data = primarySeries();
    const ValueAxis *yAxis = plot ? plot->axisY() : nullptr;
    if (!m_axis || !data || !yAxis || (type != PeakLeft && type != PeakRight))
        return -1;
    const int size = data->size();
    const int first = getPositionIndex(m_axis->minVisible(), size, m_axis->minValue(), m_axis->maxValue());
    const int last = getPositionIndex(m_axis->maxVisible(), size, m_axis->minValue(), m_axis->maxValue());
    if (size < 1 || first > last)
        return -1;
    QVector<double> y(last - first + 1);
    for (int i = 0; i < y.size(); ++i)
        y[i] = data->y(first + i);
    const int end = y.size() - 1;
    const int start = std::max(std::min(m_posIndex, last), first) - first;
    const double tolerance = computePeakTolerance(y, 0, end, yAxis->minVisible(), yAxis->maxVisible());
    const int peak = peakBeside(type == PeakRight, y, 0, end, start, tolerance);
    return peak < 0 ? -1 : first + peak;
}

/*!
    \qmlmethod int GraphCursor::getNextPeak(bool right, list<real> y, int first, int last, double min, double max)
    The index in \a y of the peak next to the cursor's posIndex on one side, within \a first to \a last; -1 when the search
    finds none (see setPeakLeft) and for indices outside of \a y. \a min and \a max are the visible range of the vertical axis, see
    computePeakTolerance.
*/
int GraphCursor::getNextPeak(bool right, const QVector<double> &y, int first, int last, double min,
                             double max) const
{
    const int end = std::min(last, y.size() - 1);
    if (first < 0 || first > end)
        return -1;
    const double tolerance = computePeakTolerance(y, first, last, min, max);
    const int start = std::max(std::min(m_posIndex, end), first);
    return peakBeside(right, y, first, end, start, tolerance);
}

/*!
    \qmlmethod double GraphCursor::computePeakTolerance(list<real> y, int first, int last, double min, double max)
    How far a sample must stand out to be a peak, in units of y: a tenth of the span of \a y from \a first to \a last,
    or of \a max - \a min if that is smaller. 0 for an index outside of \a y.
*/
double GraphCursor::computePeakTolerance(const QVector<double> &y, int first, int last, double min,
                                         double max) const
{
    double lowest = 0.0;
    double highest = 0.0;
    if (!getMinMaxY(y, first, last, lowest, highest))
        return 0.0;
    return PeakAnalysis::defaultYToleranceForPowerRange(highest - lowest, max - min);
}

/*!
    \qmlmethod bool GraphCursor::getMinMaxY(list<real> y, int first, int last, double min, double max)
    \internal
    Returns its result through references, which scripts cannot give.
*/
// The sample at `last` does not count.
bool GraphCursor::getMinMaxY(const QVector<double> &y, int first, int last, double &min, double &max) const
{
    if (first < 0 || first >= y.size())
        return false;
    min = max = y.at(first);
    for (int i = first + 1; i < std::min(last, y.size()); ++i) {
        const double value = y.at(i);
        if (value < min || std::isnan(min))
            min = value;
        if (value > max || std::isnan(max))
            max = value;
    }
    return true;
}

/*!
    \qmlmethod int GraphCursor::getPositionIndex(double value, int count, double min, double max)
    The index of the sample at \a value when \a count samples lie equally spaced from \a min to \a max; values outside
    give the first or the last one, NaN and an empty range 0.
*/
int GraphCursor::getPositionIndex(double value, int count, double min, double max)
{
    if (value < min)
        return 0;
    const double last = count - 1.0; // the difference may not fit into an int
    if (value > max)
        return graph::truncatedIndex(last);
    return graph::roundedIndex((value - min) / (max - min) * last);
}
