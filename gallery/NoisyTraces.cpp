#include "NoisyTraces.h"

#include <cmath>
#include <random>

namespace gallery {

namespace {

const int traceCount = 10;
const int mostSamples = 10000000;
const double twoPi = 6.28318530717958647692;

QVector<double> noisySine(int number, int samples)
{
    // Only the generator itself gives the same numbers with every standard library.
    std::mt19937 generator(number + 1);
    const auto noise = [&generator] { return 0.4 * generator() / double(std::mt19937::max()) - 0.2; };
    const double phase = 0.6 * std::sin(twoPi * number / traceCount);
    QVector<double> trace(samples);
    for (int i = 0; i < samples; ++i)
        trace[i] = std::sin(3.0 * twoPi * i / samples + phase) + noise() + noise();
    return trace;
}

} // namespace

QVector<double> NoisyTraces::trace(int number, int samples)
{
    if (samples < 1 || samples > mostSamples)
        return {};
    if (samples != m_samples) {
        m_samples = samples;
        // The former ones first: both at once may be more than there is room for.
        m_traces.clear();
        for (int i = 0; i < traceCount; ++i)
            m_traces.append(noisySine(i, samples));
    }
    const int remainder = number % traceCount;
    return m_traces.at(remainder < 0 ? remainder + traceCount : remainder);
}

} // namespace gallery
