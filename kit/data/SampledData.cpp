#include "kit/data/SampledData.h"

#include "common/SafeInteger.h"

#include <cmath>

namespace graph {

namespace {

// The extremes of the finite values. Read one by one only where there are others.
template <typename Value>
MinMax finiteExtremes(const SampleSpan &samples, const MinMax &extremes, Value value)
{
    if (extremes.isEmpty() || (std::isfinite(extremes.min) && std::isfinite(extremes.max)))
        return extremes;
    MinMax finite;
    for (int i = 0; i < samples.size(); ++i) {
        if (const double v = value(i); std::isfinite(v))
            finite.add({v, v});
    }
    return finite;
}

} // namespace

// The extent of the finite samples; null without any.
QRectF SampledData::boundingRect() const
{
    const SampleSpan samples = allSamples();
    const int count = samples.size();
    if (count == 0)
        return {};
    const MinMax x =
        finiteExtremes(samples, {samples.x(0), samples.x(count - 1)}, [&](int i) { return samples.x(i); });
    const MinMax y = finiteExtremes(samples, samples.minMax(0, count), [&](int i) { return samples.y(i); });
    return graph::boundingRect(x, y);
}

QPointF SampledData::sample(int index) const
{
    const SampleSpan samples = allSamples();
    if (index < 0 || index >= samples.size())
        return {};
    return samples.at(samples.isBackwards() ? samples.size() - 1 - index : index);
}

QVector<QPointF> SampledData::samples(const QRectF &rect) const
{
    return sampleSpan(rect).toVector();
}

// The sample nearest to x, -1 without any.
int SampledData::indexOf(double x) const
{
    const SampleSpan samples = allSamples();
    if (samples.isEmpty() || std::isnan(x))
        return -1;
    int nearest = samples.countBelow(x, samples.size() / 2);
    if (nearest > 0 && (nearest == samples.size() || x - samples.x(nearest - 1) <= samples.x(nearest) - x))
        --nearest;
    return samples.dataIndex(nearest);
}

bool SampledData::containsPoint(double x)
{
    const SampleSpan samples = allSamples();
    return !samples.isEmpty() && samples.x(0) <= x && x <= samples.x(samples.size() - 1);
}

} // namespace graph
