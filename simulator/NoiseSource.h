#pragma once

#include <QtGlobal>

namespace simulation {

// Random numbers that depend on the seed, the sweep and the stream alone and are the same on every machine.
class NoiseSource
{
public:
    NoiseSource(quint64 seed, quint64 sweep, quint64 stream);

    quint64 next();
    // Uniform over 0 <= u < 1.
    double uniform();
    // Mean 0, variance 1, never beyond +-4.9.
    double gaussian();

private:
    quint64 m_state;
};

} // namespace simulation
