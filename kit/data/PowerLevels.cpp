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

// A product and a sum, in one instruction where it is fused.
template <bool fused> __attribute__((always_inline)) inline double multiplied(double a, double b, double sum)
{
    if constexpr (fused)
        return __builtin_fma(a, b, sum);
    return a * b + sum;
}

// The polynomial with these coefficients, that of the highest power first.
template <bool fused> __attribute__((always_inline)) inline double polynomial(double, double coefficient)
{
    return coefficient;
}

template <bool fused, typename... Others>
__attribute__((always_inline)) inline double polynomial(double x, double first, double second,
                                                        Others... others)
{
    return polynomial<fused>(x, multiplied<fused>(first, x, second), others...);
}

// e^x as 2^k e^r with a whole k: |r| is at most half the logarithm of 2. There the polynomial of (e^r - 1 - r) / r^2 is
// the one whose largest error is least, 3.7e-18 of e^r.
template <bool fused> struct PowerOfLevel
{
    static bool isOrdinary(double level) { return std::abs(level) <= 3000.0; }
    static double byLibrary(double level) { return std::exp(level * tenthOfLogTen); }

    __attribute__((always_inline)) static inline double of(double level)
    {
        constexpr double rounder = 6755399441055744.0; // 1.5 * 2^52: a sum with it is whole
        const double x = level * tenthOfLogTen;
        const double shifted = multiplied<fused>(x, 1.4426950408889634, rounder);
        const double k = shifted - rounder;
        const double r = multiplied<fused>(-k, logTwoLow, multiplied<fused>(-k, logTwoHigh, x));
        const double series = polynomial<fused>(
            r, 2.5000072304856067e-08, 2.76302339357227e-07, 2.7557586266459244e-06, 2.480149313614022e-05,
            0.00019841269506779498, 0.0013888888943597744, 0.008333333333494333, 0.041666666666530267,
            0.16666666666666413, 0.5000000000000011);
        const double sum = multiplied<fused>(series, r * r, r);
        return (1.0 + sum) * doubleOf((bitsOf(shifted) + exponentOfOne) << 52);
    }
};

// log x as k log 2 + log m, m between the square roots of 1/2 and of 2. With f = (m - 1) / (m + 1) log m is 2 f, and
// 2 f^3 times a polynomial of f^2: the one whose largest error is least, 1.3e-18 of log m.
template <bool fused> struct LevelOfPower
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
        const double series = polynomial<fused>(s, 0.07397973991291855, 0.0765702535976918,
                                                0.09091782159922207, 0.11111099286648643, 0.14285714371193323,
                                                0.1999999999970734, 0.3333333333333367);
        const double sum = multiplied<fused>(2.0 * f * s, series, k * logTwoLow);
        return multiplied<fused>(k, logTwoHigh, 2.0 * f + sum) * tenOverLogTen;
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

#ifdef __FP_FAST_FMA
constexpr bool isFused = true;
#else
constexpr bool isFused = false;
#endif

#if defined(__x86_64__) && !defined(__AVX2__)
// Twice as many values at a time as every processor of the kind has registers for.
template <typename Function>
__attribute__((target("avx2,fma"))) void computeWide(double *results, const double *values, int count)
{
    computeBlocks<Function>(results, values, count);
}
#endif

template <template <bool> class Function> void compute(double *results, const double *values, int count)
{
#if defined(__x86_64__) && !defined(__AVX2__)
    if (__builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma")) {
        computeWide<Function<true>>(results, values, count);
        return;
    }
#endif
    computeBlocks<Function<isFused>>(results, values, count);
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
