#include "kit/chart/LeastPositive.h"

#include <algorithm>

namespace graph {

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

} // namespace

double LeastPositive::y(const PlotData *data, double xMin, double xMax)
{
    const auto isGone = [](const Known &known) { return !known.data; };
    m_known.erase(std::remove_if(m_known.begin(), m_known.end(), isGone), m_known.end());
    auto known =
        std::find_if(m_known.begin(), m_known.end(), [data](const Known &k) { return k.data == data; });
    if (known == m_known.end())
        known = m_known.insert(m_known.end(), {data, {}});
    const SampleSpan samples = data->sampleSpan(-infinity, infinity);
    known->sums.follow(samples, data->history());
    // Segments are in no order.
    const bool isSorted = !data->usePointsAsSegments();
    const int first = isSorted ? samples.countBelow(xMin) : 0;
    const int end = isSorted ? samples.countUpTo(xMax, first) : samples.size();
    return first < end ? known->sums.of(samples, first, end).leastPositive : infinity;
}

double LeastPositive::x(const PlotData *data)
{
    const SampleSpan samples = data->sampleSpan(-infinity, infinity);
    if (!data->usePointsAsSegments()) {
        const int first = samples.countUpTo(0.0);
        return first < samples.size() ? samples.x(first) : infinity;
    }
    double least = infinity;
    for (int i = 0; i < samples.size(); ++i) {
        if (samples.x(i) > 0.0)
            least = std::min(least, samples.x(i));
    }
    return least;
}

} // namespace graph
