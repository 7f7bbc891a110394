#include "simulator/NoiseSource.h"

namespace simulation {

namespace {

quint64 mixed(quint64 bits)
{
    bits = (bits ^ (bits >> 30)) * Q_UINT64_C(0xbf58476d1ce4e5b9);
    bits = (bits ^ (bits >> 27)) * Q_UINT64_C(0x94d049bb133111eb);
    return bits ^ (bits >> 31);
}

constexpr quint64 goldenStep = Q_UINT64_C(0x9e3779b97f4a7c15);

int sumOfQuarters(quint64 bits)
{
    return int(bits & 0xffff) + int((bits >> 16) & 0xffff) + int((bits >> 32) & 0xffff) + int(bits >> 48);
}

} // namespace

NoiseSource::NoiseSource(quint64 seed, quint64 sweep, quint64 stream)
    : m_state(mixed(mixed(mixed(seed + goldenStep) ^ (sweep + goldenStep)) ^ (stream + goldenStep)))
{
}

quint64 NoiseSource::next()
{
    m_state += goldenStep;
    return mixed(m_state);
}

double NoiseSource::uniform()
{
    return double(next() >> 11) * 0x1p-53;
}

double NoiseSource::gaussian()
{
    // The sum of eight even variables is close to normal, ten times cheaper than logarithms and roots, and
    // does not depend on the rounding of a mathematics library.
    const int sum = sumOfQuarters(next()) + sumOfQuarters(next());
    constexpr double mean = 4 * 65535.0;
    constexpr double deviation = 53509.94497; // 65536 * sqrt(8 / 12)
    return (sum - mean) / deviation;
}

} // namespace simulation
