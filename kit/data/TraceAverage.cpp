#include "kit/data/TraceAverage.h"

#include "kit/data/Computing.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace graph {

namespace {

constexpr double missing = std::numeric_limits<double>::quiet_NaN();

// What a value adds to a sum, and to the number of values in it.
double present(double value)
{
    return std::isfinite(value) ? value : 0.0;
}

} // namespace

void TraceAverage::reset(int depth)
{
    m_depth = depth;
    m_taken = 0;
    m_next = 0;
    m_traces.clear();
    m_sums.clear();
    m_numbers.clear();
}

void TraceAverage::addLinear(const double *values, double *mean, int count)
{
    const bool isFull = m_taken == m_depth;
    if (m_traces.size() <= m_next)
        m_traces.append(QVector<double>(count));
    if (m_sums.isEmpty())
        m_sums.fill(0.0, count);
    if (m_numbers.isEmpty() && !areFinite(values, count))
        m_numbers.fill(double(m_taken), count);
    double *trace = m_traces[m_next].data();
    const double *former = isFull ? trace : nullptr;
    if (m_numbers.isEmpty())
        replaceFinite(values, former, count);
    else
        replaceAny(values, former, count);
    std::copy(values, values + count, trace);
    m_taken = std::min(m_taken + 1, m_depth);
    // What is added and taken away again leaves rounding errors. A part of the places at a time is summed
    // again from the traces themselves, all of them while the traces are replaced once.
    const qint64 place = m_next;
    if (isFull)
        sumAgain(int(place * count / m_depth), int((place + 1) * count / m_depth));
    m_next = m_next + 1 == m_depth ? 0 : m_next + 1;

    const double *sums = m_sums.constData();
    const double *numbers = m_numbers.constData();
    if (m_numbers.isEmpty()) {
        const double factor = 1.0 / m_taken;
        for (int i = 0; i < count; ++i)
            mean[i] = sums[i] * factor;
    } else {
        for (int i = 0; i < count; ++i)
            mean[i] = numbers[i] > 0.0 ? sums[i] / numbers[i] : missing;
    }
}

void TraceAverage::replaceFinite(const double *values, const double *former, int count)
{
    double *sums = m_sums.data();
    if (former) {
        for (int i = 0; i < count; ++i)
            sums[i] += values[i] - former[i];
    } else {
        for (int i = 0; i < count; ++i)
            sums[i] += values[i];
    }
}

void TraceAverage::replaceAny(const double *values, const double *former, int count)
{
    double *sums = m_sums.data();
    double *numbers = m_numbers.data();
    for (int i = 0; i < count; ++i) {
        sums[i] += present(values[i]);
        numbers[i] += std::isfinite(values[i]);
    }
    for (int i = 0; former && i < count; ++i) {
        sums[i] -= present(former[i]);
        numbers[i] -= std::isfinite(former[i]);
    }
}

void TraceAverage::sumAgain(int first, int end)
{
    double *sums = m_sums.data();
    std::fill(sums + first, sums + end, 0.0);
    for (const QVector<double> &trace : qAsConst(m_traces)) {
        const double *values = trace.constData();
        if (m_numbers.isEmpty()) {
            for (int i = first; i < end; ++i)
                sums[i] += values[i];
        } else {
            for (int i = first; i < end; ++i)
                sums[i] += present(values[i]);
        }
    }
}

void TraceAverage::addExponential(const double *values, double *mean, int count)
{
    if (m_taken == 0)
        std::fill(mean, mean + count, missing);
    m_taken = std::min(m_taken + 1, m_depth);
    const double weight = 1.0 / m_taken;
    for (int i = 0; i < count; ++i) {
        const double former = mean[i];
        const double next = former + (values[i] - former) * weight;
        // A former value that is missing, and a new one.
        const double other = std::isfinite(values[i]) ? values[i] : former;
        mean[i] = next - next == 0.0 ? next : other;
    }
}

} // namespace graph
