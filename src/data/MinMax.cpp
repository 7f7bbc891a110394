#include "data/MinMax.h"

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace graph {

namespace {

double value(double sample)
{
    return sample;
}

double value(const QPointF &sample)
{
    return sample.y();
}

#ifdef __SSE2__
constexpr int groupSize = 8;

__m128d twoValues(const double *values)
{
    return _mm_loadu_pd(values);
}

__m128d twoValues(const QPointF *points)
{
    return _mm_set_pd(points[1].y(), points[0].y());
}

// The extremes of the even and of the odd samples. The instructions pass over a first operand that is NaN.
struct TwoExtremes
{
    __m128d min = _mm_set1_pd(MinMax().min);
    __m128d max = _mm_set1_pd(MinMax().max);

    void add(__m128d values)
    {
        min = _mm_min_pd(values, min);
        max = _mm_max_pd(values, max);
    }
    void add(const TwoExtremes &other)
    {
        min = _mm_min_pd(other.min, min);
        max = _mm_max_pd(other.max, max);
    }

    MinMax both() const
    {
        return {_mm_cvtsd_f64(_mm_min_sd(min, _mm_unpackhi_pd(min, min))),
                _mm_cvtsd_f64(_mm_max_sd(max, _mm_unpackhi_pd(max, max)))};
    }
};

// The extremes of whole groups of samples. Four run side by side, because each comparison has to wait for the
// one before it; they are spelled out, because the compiler keeps an array of them in memory.
template <typename Sample> MinMax groupExtremes(const Sample *samples, int count)
{
    TwoExtremes a, b, c, d;
    for (const Sample *end = samples + count; samples != end; samples += groupSize) {
        a.add(twoValues(samples));
        b.add(twoValues(samples + 2));
        c.add(twoValues(samples + 4));
        d.add(twoValues(samples + 6));
    }
    a.add(b);
    c.add(d);
    a.add(c);
    return a.both();
}
#else
constexpr int groupSize = std::numeric_limits<int>::max();

template <typename Sample> MinMax groupExtremes(const Sample *, int)
{
    return MinMax();
}
#endif

template <typename Sample> MinMax extremes(const Sample *samples, int count)
{
    const int grouped = count > 0 ? count / groupSize * groupSize : 0;
    MinMax result = groupExtremes(samples, grouped);
    for (int i = grouped; i < count; ++i) {
        // Not std::min: comparisons with NaN are false, so that it changes nothing.
        const double v = value(samples[i]);
        if (v < result.min)
            result.min = v;
        if (v > result.max)
            result.max = v;
    }
    return result;
}

// Counted, not searched for: without a way out the compiler compares several samples at a time.
template <typename Sample> bool isAnyNaN(const Sample *samples, int count)
{
    int found = 0;
    for (int i = 0; i < count; ++i)
        found += value(samples[i]) != value(samples[i]);
    return found > 0;
}

} // namespace

MinMax minMax(const double *values, int count)
{
    return extremes(values, count);
}

MinMax minMax(const QPointF *points, int count)
{
    return extremes(points, count);
}

bool hasNaN(const double *values, int count)
{
    return isAnyNaN(values, count);
}

bool hasNaN(const QPointF *points, int count)
{
    return isAnyNaN(points, count);
}

} // namespace graph
