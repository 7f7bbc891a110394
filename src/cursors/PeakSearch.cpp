#include "cursors/PeakSearch.h"

#include "axis/ValueAxis.h"
#include "common/SafeInteger.h"
#include "cursors/NearestSample.h"
#include "cursors/PeakAnalysis.h"
#include "data/PlotData.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <vector>

namespace graph {

namespace {

// visiblePeak() among the samples that the axes really show, by what is higher on the screen.
int shownPeak(bool right, const PlotData &data, const ValueAxis &along, const ValueAxis &across, int start)
{
    if (data.size() < 1)
        return -1;
    const auto [first, last] =
        std::minmax({nearestSample(data, along.minVisible()), nearestSample(data, along.maxVisible())});
    const auto [lowest, highest] = std::minmax({across.minVisible(), across.maxVisible()});
    const bool isLinear = across.scaleKind() == ScaleKind::Linear;
    const double least = lowest;
    const auto height = [&](double y) { return isLinear ? y : std::log(std::max(y, least)); };
    QVector<double> y(last - first + 1);
    for (int i = 0; i < y.size(); ++i)
        y[i] = height(data.y(first + i));
    const bool isRising = (data.x(first) <= data.x(last)) != along.isReversed();
    const int peak =
        nextPeak(right == isRising, y, 0, y.size() - 1, start - first, height(lowest), height(highest));
    return peak < 0 ? -1 : first + peak;
}

} // namespace

/*!
    \qmlmethod void GraphCursor::setPeak()
    Moves the cursor to the highest sample of the primary plot's data, the first of equal ones.
*/
int highestSample(const PlotData &data)
{
    const int size = data.size();
    int best = size < 1 ? -1 : 0;
    double top = data.y(0);
    for (int i = 1; i < size; ++i) {
        const double y = data.y(i);
        if (y > top || std::isnan(top)) {
            top = y;
            best = i;
        }
    }
    return best;
}

/*!
    \qmlmethod void GraphCursor::setPeakLeft()
    Moves the cursor to a peak on its left in the visible range, and stays when the search finds none.

    The search looks for a summit that rises and falls by a tolerance: a tenth of the data's span in the visible range, or
    of the visible span of the vertical axis if that is smaller. It does not find every such summit. First it straightens
    what is smaller than the tolerance, starting at the cursor; narrow peaks and close ones can lose height by that and be
    passed over, and the way left can stop at other peaks than the way right. It takes the samples as equally spaced over
    the whole range of the axis, regardless of their x: points at uneven places, and data that cover only a part of the axis,
    are searched in a stretch that is not the visible one. And it ends at a missing sample (NaN).

    Use it to step through clear peaks over noise while the user looks on. Do not rely on it to count peaks, to find all
    of them or to decide a measurement; go through the samples for that.
*/

/*!
    \qmlmethod void GraphCursor::setPeakRight()
    The same on its right; see setPeakLeft for what the search finds.
*/

/*!
    \qmlmethod int GraphCursor::findPeak(PeakType type)
    The index of the sample that setPeakLeft (type \c GraphCursor.PeakLeft) or setPeakRight (type
    \c GraphCursor.PeakRight) would move to, -1 if the search finds none.
*/
int visiblePeak(bool right, const PlotData &data, const ValueAxis &along, const ValueAxis &across, int start)
{
    if (along.isReversible() || across.isReversible())
        return shownPeak(right, data, along, across, start);
    // From here on the axes are linear, as those are that cannot be reversed.
    const int size = data.size();
    const int first = evenlySpacedIndex(along.minVisible(), size, along.minValue(), along.maxValue());
    const int last = evenlySpacedIndex(along.maxVisible(), size, along.minValue(), along.maxValue());
    if (size < 1 || first > last)
        return -1;
    QVector<double> y(last - first + 1);
    for (int i = 0; i < y.size(); ++i)
        y[i] = data.y(first + i);
    const int peak =
        nextPeak(right, y, 0, y.size() - 1, start - first, across.minVisible(), across.maxVisible());
    return peak < 0 ? -1 : first + peak;
}

/*!
    \qmlmethod int GraphCursor::getNextPeak(bool right, list<real> y, int first, int last, double min, double max)
    The index in \a y of the peak next to the cursor's posIndex on one side, within \a first to \a last; -1 when the search
    finds none (see setPeakLeft) and for indices outside of \a y. \a min and \a max are the visible range of the vertical axis, see
    computePeakTolerance.
*/
int nextPeak(bool right, const QVector<double> &y, int first, int last, int start, double min, double max)
{
    const double tolerance = peakTolerance(y, first, last, min, max);
    const int end = std::min(last, int(y.size()) - 1);
    if (first < 0 || first > end)
        return -1;
    const int from = std::max(std::min(start, end), first);
    const int begin = right ? from : first;
    const long count = (right ? end : from) - begin + 1L;
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

/*!
    \qmlmethod double GraphCursor::computePeakTolerance(list<real> y, int first, int last, double min, double max)
    How far a sample must stand out to be a peak, in units of y: a tenth of the span of \a y from \a first to \a last,
    or of \a max - \a min if that is smaller. 0 for an index outside of \a y.
*/
double peakTolerance(const QVector<double> &y, int first, int last, double min, double max)
{
    double lowest = 0.0;
    double highest = 0.0;
    if (!findSpan(y, first, last, lowest, highest))
        return 0.0;
    return PeakAnalysis::defaultYToleranceForPowerRange(highest - lowest, max - min);
}

/*!
    \qmlmethod bool GraphCursor::getMinMaxY(list<real> y, int first, int last, double min, double max)
    \internal
    Returns its result through references, which scripts cannot give.
*/
bool findSpan(const QVector<double> &y, int first, int last, double &min, double &max)
{
    if (first < 0 || first >= y.size())
        return false;
    min = max = y.at(first);
    for (int i = first + 1; i < std::min(last, int(y.size())); ++i) {
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
int evenlySpacedIndex(double value, int count, double min, double max)
{
    if (value < min)
        return 0;
    const double last = count - 1.0; // the difference may not fit into an int
    if (value > max)
        return truncatedIndex(last);
    return roundedIndex((value - min) / (max - min) * last);
}

} // namespace graph
