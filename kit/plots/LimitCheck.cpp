#include "kit/plots/LimitCheck.h"

#include <algorithm>
#include <cmath>

namespace graph {

namespace {

// Samples of which only the extremes are asked for, where these cannot be worse than what is known.
constexpr int stretch = 512;

double transformed(double value, ScaleKind kind)
{
    return kind == ScaleKind::Logarithmic ? std::log(value) : value;
}

// The line between two points of a limit.
class LimitSegment
{
public:
    LimitSegment(const QPointF &begin, const QPointF &end, const LimitScales &scales)
        : m_scales(scales)
        , m_x(transformed(begin.x(), scales.x))
        , m_y(transformed(begin.y(), scales.y))
        , m_range(transformed(end.x(), scales.x) - m_x)
        , m_rise(transformed(end.y(), scales.y) - m_y)
    {
    }

    bool isUsable() const
    {
        return std::isfinite(m_x) && std::isfinite(m_y) && std::isfinite(m_range) && std::isfinite(m_rise);
    }

    double at(double x) const
    {
        const double place = m_range > 0.0 ? (transformed(x, m_scales.x) - m_x) / m_range : 0.0;
        const double y = m_y + place * m_rise;
        return m_scales.y == ScaleKind::Logarithmic ? std::exp(y) : y;
    }

private:
    LimitScales m_scales;
    double m_x;
    double m_y;
    double m_range;
    double m_rise;
};

class Comparison
{
public:
    Comparison(LimitSide side, const SampleSpan &samples)
        : m_sign(side == LimitSide::Upper ? 1.0 : -1.0)
        , m_samples(samples)
    {
    }

    LimitVerdict verdict() const { return m_verdict; }

    // The samples first..end-1, which lie between the ends of the segment. It rises or falls throughout, so
    // that its extremes over a stretch are those of the stretch's ends.
    void add(const LimitSegment &segment, int first, int end)
    {
        for (int i = first; i < end; i += stretch) {
            const int last = std::min(i + stretch, end) - 1;
            const MinMax extremes = m_samples.minMax(i, last + 1);
            if (extremes.isEmpty())
                continue;
            const double nearest = m_sign * (m_sign > 0.0 ? extremes.max : extremes.min);
            const double limit =
                std::min(m_sign * segment.at(m_samples.x(i)), m_sign * segment.at(m_samples.x(last)));
            // A hair below, as the values between are rounded on their own.
            if (limit - std::abs(limit) * 1e-9 - nearest >= m_verdict.margin)
                continue;
            for (int k = i; k <= last; ++k)
                add(m_sign * (segment.at(m_samples.x(k)) - m_samples.y(k)), m_samples.x(k));
        }
    }

private:
    void add(double margin, double x)
    {
        if (std::isnan(margin) || margin >= m_verdict.margin)
            return;
        m_verdict.margin = margin;
        m_verdict.worstAt = x;
    }

    double m_sign;
    const SampleSpan &m_samples;
    LimitVerdict m_verdict;
};

} // namespace

LimitVerdict checkLimit(const QVector<QPointF> &limit, LimitSide side, const SampleSpan &samples,
                        const LimitScales &scales)
{
    Comparison comparison(side, samples);
    for (int i = 0; i + 1 < limit.size(); ++i) {
        const LimitSegment segment(limit.at(i), limit.at(i + 1), scales);
        if (!segment.isUsable())
            continue;
        const int first = samples.countBelow(limit.at(i).x());
        comparison.add(segment, first, samples.countUpTo(limit.at(i + 1).x(), first));
    }
    return comparison.verdict();
}

} // namespace graph
