#include "kit/data/Computing.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace graph {

namespace {

constexpr double missing = std::numeric_limits<double>::quiet_NaN();

// The sums of the windows of 2 * reach + 1 values around each; the values beside the ends count as 0.
//
// A window is the end of one block of its length and the beginning of the next, so sums from each value to
// the end of its block, and from the beginning of the next block to each value, make up all of them. The two
// run side by side.
void sumWindows(double *result, const double *values, int count, int reach)
{
    const qint64 length = 2 * qint64(reach) + 1;
    std::vector<double> sums(std::size_t(2 * length));
    double *toEnd = sums.data();
    double *fromBegin = toEnd + length;
    const auto addUp = [&](auto block, auto next) {
        double ending = 0.0;
        double beginning = 0.0;
        for (qint64 i = 0; i < length; ++i) {
            toEnd[length - 1 - i] = ending += block(length - 1 - i);
            fromBegin[i] = beginning += next(i);
        }
    };
    for (qint64 begin = 0; begin < count; begin += length) {
        const qint64 first = begin - reach;
        const double *block = values + std::max<qint64>(first, 0);
        if (first >= 0 && first + 2 * length <= count) {
            addUp([=](qint64 i) { return block[i]; }, [=](qint64 i) { return block[length + i]; });
        } else {
            const auto value = [=](qint64 i) { return i >= 0 && i < count ? values[i] : 0.0; };
            addUp([=](qint64 i) { return value(first + i); },
                  [=](qint64 i) { return value(first + length + i); });
        }
        const qint64 end = std::min(length, count - begin);
        result[begin] = toEnd[0];
        for (qint64 i = 1; i < end; ++i)
            result[begin + i] = toEnd[i] + fromBegin[i - 1];
    }
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
        for (int i = reach; i < inner && i < count; ++i)
            result[i] /= 2.0 * reach + 1.0;
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
