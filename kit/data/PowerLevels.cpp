#include "kit/data/PowerLevels.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>

namespace graph {

namespace {

// Values are taken in blocks, as loops of a fixed length without branches, which compilers vectorise. Where a
// value is out of the ordinary, the library's functions, which know what to do then, take its block.
constexpr int blockLength = 64;

constexpr double tenthOfLogTen = 0.23025850929940457;
constexpr double tenOverLogTen = 4.3429448190325175;
constexpr double logTwoHigh = 0.693147180369123816490; // with 0 in its last 21 bits
constexpr double logTwoLow = 1.90821492927058770002e-10;
constexpr std::uint64_t mantissa = (std::uint64_t(1) << 52) - 1;
constexpr std::uint64_t exponentOfOne = 1023;

__attribute__((always_inline)) inline double doubleOf(std::uint64_t bits)
{
    double value;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

__attribute__((always_inline)) inline std::uint64_t bitsOf(double value)
{
    std::uint64_t bits;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

// e^x as 2^k e^r with a whole k: |r| is at most half the logarithm of 2, for which the series is exact after
// its term of r^13.
struct PowerOfLevel
{
    static bool isOrdinary(double level) { return std::abs(level) <= 3000.0; }
    static double byLibrary(double level) { return std::exp(level * tenthOfLogTen); }

    __attribute__((always_inline)) static inline double of(double level)
    {
        constexpr double rounder = 6755399441055744.0; // 1.5 * 2^52: a sum with it is whole
        const double x = level * tenthOfLogTen;
        const double shifted = x * 1.4426950408889634 + rounder;
        const double k = shifted - rounder;
        const double r = (x - k * logTwoHigh) - k * logTwoLow;
        double sum = 1.0 / 6227020800.0;
        sum = sum * r + 1.0 / 479001600.0;
        sum = sum * r + 1.0 / 39916800.0;
        sum = sum * r + 1.0 / 3628800.0;
        sum = sum * r + 1.0 / 362880.0;
        sum = sum * r + 1.0 / 40320.0;
        sum = sum * r + 1.0 / 5040.0;
        sum = sum * r + 1.0 / 720.0;
        sum = sum * r + 1.0 / 120.0;
        sum = sum * r + 1.0 / 24.0;
        sum = sum * r + 1.0 / 6.0;
        sum = sum * r + 0.5;
        sum = sum * r * r + r;
        return (1.0 + sum) * doubleOf((bitsOf(shifted) + exponentOfOne) << 52);
    }
};

// log x as k log 2 + log m, m between the square roots of 1/2 and of 2: the series of log((1 + f) / (1 - f)).
struct LevelOfPower
{
    static bool isOrdinary(double power) { return (power >= 1e-300) & (power <= 1e300); }
    static double byLibrary(double power) { return std::log(power) * tenOverLogTen; }

    __attribute__((always_inline)) static inline double of(double power)
    {
        constexpr std::uint64_t rootOfHalf = 0x3fe6a09e667f3bcd;
        constexpr double twoTo52 = 4503599627370496.0;
        const std::uint64_t above = bitsOf(power) - rootOfHalf + (exponentOfOne << 52);
        const double k = doubleOf((above >> 52) | bitsOf(twoTo52)) - (twoTo52 + exponentOfOne);
        const double m = doubleOf((above & mantissa) + rootOfHalf);
        const double f = (m - 1.0) / (m + 1.0);
        const double s = f * f;
        double sum = 1.0 / 23.0;
        sum = sum * s + 1.0 / 21.0;
        sum = sum * s + 1.0 / 19.0;
        sum = sum * s + 1.0 / 17.0;
        sum = sum * s + 1.0 / 15.0;
        sum = sum * s + 1.0 / 13.0;
        sum = sum * s + 1.0 / 11.0;
        sum = sum * s + 1.0 / 9.0;
        sum = sum * s + 1.0 / 7.0;
        sum = sum * s + 1.0 / 5.0;
        sum = sum * s + 1.0 / 3.0;
        return (k * logTwoHigh + (2.0 * f + (2.0 * f * s * sum + k * logTwoLow))) * tenOverLogTen;
    }
};

template <typename Function>
__attribute__((always_inline)) inline void computeBlock(double *results, const double *values)
{
    int ordinary = 0;
    for (int i = 0; i < blockLength; ++i)
        ordinary += Function::isOrdinary(values[i]);
    if (ordinary == blockLength) {
        for (int i = 0; i < blockLength; ++i)
            results[i] = Function::of(values[i]);
    } else {
        for (int i = 0; i < blockLength; ++i)
            results[i] = Function::byLibrary(values[i]);
    }
}

// Inlined, or it would not be made of the instructions of its caller.
template <typename Function>
__attribute__((always_inline)) inline void computeBlocks(double *results, const double *values, int count)
{
    int done = 0;
    for (; done + blockLength <= count; done += blockLength)
        computeBlock<Function>(results + done, values + done);
    if (done == count)
        return;
    double rest[blockLength];
    std::fill(std::copy(values + done, values + count, rest), rest + blockLength, 1.0);
    computeBlock<Function>(rest, rest);
    std::copy(rest, rest + (count - done), results + done);
}

#ifdef __x86_64__
// Twice as many values at a time as every processor of the kind has registers for.
template <typename Function>
__attribute__((target("avx2"))) void computeWide(double *results, const double *values, int count)
{
    computeBlocks<Function>(results, values, count);
}
#endif

template <typename Function> void compute(double *results, const double *values, int count)
{
#ifdef __x86_64__
    if (__builtin_cpu_supports("avx2")) {
        computeWide<Function>(results, values, count);
        return;
    }
#endif
    computeBlocks<Function>(results, values, count);
}

} // namespace

void powersOfLevels(double *powers, const double *levels, int count)
{
    compute<PowerOfLevel>(powers, levels, count);
}

void levelsOfPowers(double *levels, const double *powers, int count)
{
    compute<LevelOfPower>(levels, powers, count);
}

} // namespace graph
