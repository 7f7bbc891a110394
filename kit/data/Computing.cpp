#include "kit/data/Computing.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace graph {

namespace {

constexpr double missing = std::numeric_limits<double>::quiet_NaN();

// Sums within blocks as long as the window: from the beginning of the block up to each value, and from each
// value to the end of the block. Any window is the end of one block and the beginning of the next.
struct BlockSums
{
    BlockSums(const double *values, int count, int length)
        : fromBegin(count)
        , toEnd(count)
    {
        double *from = fromBegin.data();
        double *to = toEnd.data();
        for (int begin = 0; begin < count;) {
            const int end = int(std::min<qint64>(qint64(begin) + length, count));
            double sum = 0.0;
            for (int i = begin; i < end; ++i)
                from[i] = sum += values[i];
            sum = 0.0;
            for (int i = end - 1; i >= begin; --i)
                to[i] = sum += values[i];
            begin = end;
        }
    }

    QVector<double> fromBegin;
    QVector<double> toEnd;
};

// The sums of the windows of `length` values around each; the values beside the ends count as 0.
void sumWindows(double *result, const double *values, int count, int reach)
{
    const int length = 2 * reach + 1;
    const BlockSums sums(values, count, length);
    const double *from = sums.fromBegin.constData();
    const double *to = sums.toEnd.constData();
    const auto sum = [&](int first, int last) {
        if (first % length == 0)
            return from[last]; // of one block, as the first window is
        if (first / length == last / length)
            return to[first]; // at the end of the last block
        return to[first] + from[last];
    };
    const int inner = std::max(count - reach, 0);
    for (int i = 0; i < std::min(reach, count); ++i)
        result[i] = sum(0, std::min(i + reach, count - 1));
    int place = 0; // of the first value of the window in its block
    for (int i = reach; i < inner; ++i) {
        result[i] = place == 0 ? from[i + reach] : to[i - reach] + from[i + reach];
        place = place + 1 == length ? 0 : place + 1;
    }
    for (int i = std::max(inner, reach); i < count; ++i)
        result[i] = sum(i - reach, count - 1);
}

} // namespace

void holdGreatest(double *held, const double *values, int count)
{
    for (int i = 0; i < count; ++i) {
        const double former = held[i];
        const double value = values[i];
        const bool isTaken = (value > former) | (former != former);
        held[i] = isTaken ? value : former;
    }
}

void holdLeast(double *held, const double *values, int count)
{
    for (int i = 0; i < count; ++i) {
        const double former = held[i];
        const double value = values[i];
        const bool isTaken = (value < former) | (former != former);
        held[i] = isTaken ? value : former;
    }
}

void subtract(double *result, const double *values, const double *reference, int count)
{
    for (int i = 0; i < count; ++i)
        result[i] = values[i] - reference[i];
}

bool areFinite(const double *values, int count)
{
    // The difference to itself is 0 for what is finite, and NaN else.
    int others = 0;
    for (int i = 0; i < count; ++i)
        others += values[i] - values[i] != 0.0;
    return others == 0;
}

void smooth(double *result, const double *values, int count, int reach)
{
    if (count < 1)
        return;
    reach = std::min(std::max(reach, 0), count - 1);
    // A window that holds all values from anywhere would be longer than an int for the longest traces.
    reach = std::min(reach, (std::numeric_limits<int>::max() - 1) / 2);
    if (areFinite(values, count)) {
        sumWindows(result, values, count, reach);
        const double factor = 1.0 / (2.0 * reach + 1.0);
        const auto mean = [&](int i) {
            const int first = std::max(i - reach, 0);
            const int last = int(std::min<qint64>(qint64(i) + reach, count - 1));
            return result[i] / (last - first + 1);
        };
        const int inner = std::max(count - reach, reach);
        for (int i = 0; i < std::min(reach, count); ++i)
            result[i] = mean(i);
        for (int i = reach; i < inner && i < count; ++i)
            result[i] *= factor;
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
