#include "kit/data/TraceAverage.h"

#include "kit/data/Computing.h"
#include "kit/data/PowerLevels.h"
#include "kit/data/WideLoops.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

namespace graph {

namespace {

constexpr double missing = std::numeric_limits<double>::quiet_NaN();

// Traces are taken in stretches that stay in the nearest cache from the first step to the last.
constexpr int stretchLength = 512;

// What a value adds to a sum, and to the number of values in it.
double present(double value)
{
    return std::isfinite(value) ? value : 0.0;
}

// Calls function(first, count) for each stretch.
template <typename Function> void forStretches(int count, const Function &function)
{
    for (int first = 0; first < count; first += stretchLength)
        function(first, std::min(stretchLength, count - first));
}

// Whether what is left of one of the sums is little beside what was taken away, so that rounding errors count in it.
bool leavesLittle(const double *former, const double *sums, int count)
{
    constexpr double little = 1e-5;
    std::int64_t losses = 0;
    runLoop([=, &losses]() GRAPH_WIDE_LOOP {
        std::int64_t own = 0;
        for (int i = 0; i < count; ++i)
            own += std::abs(sums[i]) < std::abs(former[i]) * little;
        losses = own;
    });
    return losses > 0;
}

void fade(const double *values, double *mean, int count, double weight)
{
    runLoop([=]() GRAPH_WIDE_LOOP {
        for (int i = 0; i < count; ++i) {
            const double former = mean[i];
            const double next = former + (values[i] - former) * weight;
            // A former value that is missing, and a new one.
            const double other = values[i] - values[i] == 0.0 ? values[i] : former;
            mean[i] = next - next == 0.0 ? next : other;
        }
    });
}

} // namespace

void TraceAverage::reset(int depth, Of of)
{
    m_depth = depth;
    m_of = of;
    m_taken = 0;
    m_next = 0;
    m_traces.clear();
    m_sums.clear();
    m_numbers.clear();
}

const double *TraceAverage::averaged(double *buffer, const double *values, int count) const
{
    if (m_of == Values)
        return values;
    powersOfLevels(buffer, values, count);
    return buffer;
}

void TraceAverage::addLinear(const double *values, double *mean, int count)
{
    if (m_traces.size() <= m_next)
        m_traces.append(QVector<double>(count));
    if (m_sums.isEmpty())
        m_sums.fill(0.0, count);
    // What is added and taken away again leaves rounding errors. A part of the places at a time is summed
    // again from the traces themselves, all of them while the traces are replaced once.
    const bool isFull = m_taken == m_depth;
    const qint64 place = m_next;
    const int againFirst = isFull ? int(place * count / m_depth) : 0;
    const int againEnd = isFull ? int((place + 1) * count / m_depth) : 0;
    forStretches(count, [&](int first, int length) {
        double buffer[stretchLength];
        replaceFormer(averaged(buffer, values + first, length), first, length);
        sumAgain(std::max(first, againFirst), std::min(first + length, againEnd));
        divide(mean, first, length);
        if (m_of == Powers)
            levelsOfPowers(mean + first, mean + first, length);
    });
    m_taken = std::min(m_taken + 1, m_depth);
    m_next = m_next + 1 == m_depth ? 0 : m_next + 1;
}

// Of the newest trace, and of the oldest one, in whose place it comes.
void TraceAverage::replaceFormer(const double *values, int first, int count)
{
    double *trace = m_traces[m_next].data() + first;
    const double *former = m_taken == m_depth ? trace : nullptr;
    if (m_numbers.isEmpty() && !areFinite(values, count))
        countFinite(first, m_sums.size());
    if (!m_numbers.isEmpty())
        replaceAny(values, former, first, count);
    else if (former)
        replaceFinite(values, former, first, count);
    else
        addFinite(values, first, count);
    // Powers are far apart: after an overload the rounding errors of its sum would be what is left.
    const bool isLost = m_of == Powers && former && leavesLittle(former, m_sums.constData() + first, count);
    std::copy(values, values + count, trace);
    if (isLost)
        sumAgain(first, first + count);
}

// All were until now. Up to `end` the newest trace is counted as well.
void TraceAverage::countFinite(int end, int count)
{
    m_numbers.fill(double(m_taken), count);
    std::fill(m_numbers.begin(), m_numbers.begin() + end, double(std::min(m_taken + 1, m_depth)));
}

void TraceAverage::addFinite(const double *values, int first, int count)
{
    double *sums = m_sums.data() + first;
    runLoop([=]() GRAPH_WIDE_LOOP {
        for (int i = 0; i < count; ++i)
            sums[i] += values[i];
    });
}

void TraceAverage::replaceFinite(const double *values, const double *former, int first, int count)
{
    double *sums = m_sums.data() + first;
    runLoop([=]() GRAPH_WIDE_LOOP {
        for (int i = 0; i < count; ++i)
            sums[i] += values[i] - former[i];
    });
}

void TraceAverage::replaceAny(const double *values, const double *former, int first, int count)
{
    double *sums = m_sums.data() + first;
    double *numbers = m_numbers.data() + first;
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
    if (first >= end)
        return;
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

void TraceAverage::divide(double *mean, int first, int count) const
{
    const double *sums = m_sums.constData();
    const double *numbers = m_numbers.constData();
    const double factor = 1.0 / std::min(m_taken + 1, m_depth);
    const bool areAllFinite = m_numbers.isEmpty();
    for (int i = first; areAllFinite && i < first + count; ++i)
        mean[i] = sums[i] * factor;
    for (int i = first; !areAllFinite && i < first + count; ++i)
        mean[i] = numbers[i] > 0.0 ? sums[i] / numbers[i] : missing;
}

void TraceAverage::addExponential(const double *values, double *mean, int count)
{
    if (m_taken == 0 && m_of == Values)
        std::fill(mean, mean + count, missing);
    if (m_taken == 0 && m_of == Powers)
        m_sums.fill(missing, count);
    m_taken = std::min(m_taken + 1, m_depth);
    const double weight = 1.0 / m_taken;
    if (m_of == Values) {
        fade(values, mean, count, weight);
        return;
    }
    double *means = m_sums.data();
    forStretches(count, [&](int first, int length) {
        double powers[stretchLength];
        powersOfLevels(powers, values + first, length);
        fade(powers, means + first, length, weight);
        levelsOfPowers(mean + first, means + first, length);
    });
}

} // namespace graph
