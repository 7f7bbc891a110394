#include "kit/data/PeakSearch.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace graph {

namespace {

// A local maximum, or an end that is higher than its neighbour, which is no peak but bounds others.
struct Top
{
    int index;
    double value;
    double valleyBefore; // the lowest sample between the top before, or the end, and this one
    bool isPeak;
};

// The tops of the finite samples first..end-1, and the lowest sample behind the last of them.
double findTops(const SampleSpan &samples, int first, int end, std::vector<Top> &tops)
{
    double valley = std::numeric_limits<double>::infinity();
    for (int i = first; i < end;) {
        const double value = samples.y(i);
        int last = i; // of those that are equal
        while (last + 1 < end && samples.y(last + 1) == value)
            ++last;
        valley = std::min(valley, value);
        const bool risesBefore = i > first && samples.y(i - 1) < value;
        const bool fallsBehind = last + 1 < end && samples.y(last + 1) < value;
        const bool isEnd = i == first || last + 1 == end;
        if ((risesBefore || i == first) && (fallsBehind || last + 1 == end)) {
            tops.push_back({i + (last - i) / 2, value, valley, !isEnd});
            valley = value;
        }
        i = last + 1;
    }
    return valley;
}

// For each top the lowest sample on the way to a higher one, or to the end.
template <typename Tops, typename Valley>
std::vector<double> lowestBefore(const Tops &begin, const Tops &end, Valley valley)
{
    struct Step
    {
        double value;
        double valley;
    };
    std::vector<Step> steps; // descending
    std::vector<double> lowest;
    for (auto top = begin; top != end; ++top) {
        double low = valley(top);
        while (!steps.empty() && steps.back().value <= top->value) {
            low = std::min(low, steps.back().valley);
            steps.pop_back();
        }
        steps.push_back({top->value, low});
        lowest.push_back(low);
    }
    return lowest;
}

void addPeaks(const SampleSpan &samples, int first, int end, QVector<Peak> &peaks)
{
    std::vector<Top> tops;
    const double lastValley = findTops(samples, first, end, tops);
    const auto left = lowestBefore(tops.begin(), tops.end(), [](const std::vector<Top>::const_iterator &top) {
        return top->valleyBefore;
    });
    const auto right =
        lowestBefore(tops.rbegin(), tops.rend(), [&](const std::vector<Top>::const_reverse_iterator &top) {
            return top == tops.crbegin() ? lastValley : std::prev(top)->valleyBefore;
        });
    for (std::size_t i = 0; i < tops.size(); ++i) {
        if (tops[i].isPeak)
            peaks.append({tops[i].index, tops[i].value,
                          std::min(tops[i].value - std::max(left[i], right[tops.size() - 1 - i]),
                                   std::numeric_limits<double>::max())});
    }
}

// The x at which the side of a peak has the height, from the peak on in steps of `way`.
double crossing(const SampleSpan &samples, int index, int way, double height)
{
    while (samples.y(index) > height)
        index += way;
    const double low = samples.y(index);
    const double inner = samples.y(index - way);
    if (low == height || low == inner)
        return samples.x(index);
    const double unit = std::isinf(inner - low) ? 2.0 : 1.0;
    const double share = (height / unit - low / unit) / (inner / unit - low / unit);
    return samples.x(index) + share * (samples.x(index - way) - samples.x(index));
}

} // namespace

QVector<Peak> findPeaks(const SampleSpan &samples)
{
    QVector<Peak> peaks;
    for (int first = 0; first < samples.size();) {
        int end = first;
        while (end < samples.size() && std::isfinite(samples.y(end)))
            ++end;
        addPeaks(samples, first, end, peaks);
        first = end + 1;
    }
    return peaks;
}

double peakWidth(const SampleSpan &samples, const Peak &peak)
{
    // On its way to a higher sample each side falls by the whole prominence.
    const double height = peak.value - peak.prominence / 2.0;
    return crossing(samples, peak.index, 1, height) - crossing(samples, peak.index, -1, height);
}

} // namespace graph
