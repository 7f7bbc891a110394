#include "kit/data/Computing.h"

#include "kit/data/WideLoops.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <vector>

namespace graph {

namespace {

constexpr double missing = std::numeric_limits<double>::quiet_NaN();

// The sums of the windows of 2 * reach + 1 values around each; the values beside the ends count as 0.
//
// A window is the end of one block of its length and the beginning of the next, so sums from each value to
// the end of its block, and from the beginning of the next block to each value, make up all of them.
class WindowSums
{
public:
    WindowSums(double *result, const double *values, int count, int reach)
        : m_result(result)
        , m_values(values)
        , m_count(count)
        , m_reach(reach)
        , m_length(2 * qint64(reach) + 1)
    {
    }

    void compute()
    {
        // Each sum waits for the one before it: several blocks are added up side by side.
        constexpr int blocks = 4;
        m_toEnd.resize(std::size_t(std::min<qint64>(blocks, m_count / m_length + 1) * m_length));
        qint64 begin = 0;
        while (begin < m_count) {
            const qint64 first = begin - m_reach;
            const auto inside = [this, first](qint64 i) { return m_values[first + i]; };
            const auto anywhere = [this, first](qint64 i) {
                return first + i >= 0 && first + i < m_count ? m_values[first + i] : 0.0;
            };
            const bool isInside = first >= 0 && first + 2 * m_length <= m_count;
            if (isInside && first + (blocks + 1) * m_length <= m_count) {
                addBlocks<blocks>(begin, inside);
                begin += blocks * m_length;
                continue;
            }
            if (isInside)
                addBlocks<1>(begin, inside);
            else
                addBlocks<1>(begin, anywhere);
            begin += m_length;
        }
    }

private:
    // value(i): of those that the first window is made of, and those behind.
    template <int blocks, typename Value> void addBlocks(qint64 begin, const Value &value)
    {
        double sums[blocks] = {};
        double *toEnd = m_toEnd.data();
        for (qint64 i = m_length - 1; i >= 0; --i) {
            for (int block = 0; block < blocks; ++block)
                toEnd[block * m_length + i] = sums[block] += value(block * m_length + i);
        }
        std::fill(sums, sums + blocks, 0.0);
        double *result = m_result + begin;
        const qint64 end = blocks == 1 ? std::min(m_length, m_count - begin) : m_length;
        for (qint64 i = 0; i < end; ++i) {
            for (int block = 0; block < blocks; ++block) {
                result[block * m_length + i] = toEnd[block * m_length + i] + sums[block];
                sums[block] += value((block + 1) * m_length + i);
            }
        }
    }

    double *m_result;
    const double *m_values;
    qint64 m_count;
    qint64 m_reach;
    qint64 m_length;
    std::vector<double> m_toEnd;
};

void sumWindows(double *result, const double *values, int count, int reach)
{
    WindowSums(result, values, count, reach).compute();
}

} // namespace

void holdGreatest(double *held, const double *values, int count)
{
    runLoop([=]() GRAPH_WIDE_LOOP {
        for (int i = 0; i < count; ++i) {
            const double former = held[i];
            const double value = values[i];
            const bool isTaken = (value > former) | (former != former);
            held[i] = isTaken ? value : former;
        }
    });
}

void holdLeast(double *held, const double *values, int count)
{
    runLoop([=]() GRAPH_WIDE_LOOP {
        for (int i = 0; i < count; ++i) {
            const double former = held[i];
            const double value = values[i];
            const bool isTaken = (value < former) | (former != former);
            held[i] = isTaken ? value : former;
        }
    });
}

void subtract(double *result, const double *values, const double *reference, int count)
{
    for (int i = 0; i < count; ++i)
        result[i] = values[i] - reference[i];
}

bool areFinite(const double *values, int count)
{
    // The difference to itself is 0 for what is finite, and NaN else, as is each sum with NaN. Several sums do not wait
    // for each other.
    constexpr int sums = 8;
    double rests[sums] = {};
    const int end = count - count % sums;
    runLoop([=, &rests]() GRAPH_WIDE_LOOP {
        double own[sums] = {};
        for (int i = 0; i < end; i += sums) {
            for (int k = 0; k < sums; ++k)
                own[k] += values[i + k] - values[i + k];
        }
        std::copy(own, own + sums, rests);
    });
    for (int i = end; i < count; ++i)
        rests[0] += values[i] - values[i];
    return std::accumulate(rests, rests + sums, 0.0) == 0.0;
}

void smooth(double *result, const double *values, int count, int reach)
{
    if (count < 1)
        return;
    reach = std::min(std::max(reach, 0), count - 1);
    if (areFinite(values, count)) {
        sumWindows(result, values, count, reach);
        const auto mean = [&](int i) {
            const int first = std::max(i - reach, 0);
            const int last = int(std::min<qint64>(qint64(i) + reach, count - 1));
            return result[i] / (last - first + 1);
        };
        const int inner = std::max(count - reach, reach);
        for (int i = 0; i < std::min(reach, count); ++i)
            result[i] = mean(i);
        runLoop([=]() GRAPH_WIDE_LOOP {
            const double length = 2.0 * reach + 1.0;
            for (int i = reach; i < std::min(inner, count); ++i)
                result[i] /= length;
        });
        for (int i = std::max(inner, reach); i < count; ++i)
            result[i] = mean(i);
        return;
    }
    QVector<double> present(count);
    QVector<double> ones(count);
    for (int i = 0; i < count; ++i) {
        const bool isFinite = std::isfinite(values[i]);
        present[i] = isFinite ? values[i] : 0.0;
        ones[i] = isFinite ? 1.0 : 0.0;
    }
    QVector<double> numbers(count);
    sumWindows(result, present.constData(), count, reach);
    sumWindows(numbers.data(), ones.constData(), count, reach);
    for (int i = 0; i < count; ++i)
        result[i] = numbers.at(i) > 0.0 ? result[i] / numbers.at(i) : missing;
}

} // namespace graph
