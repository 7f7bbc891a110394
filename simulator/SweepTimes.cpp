#include "simulator/SweepTimes.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace simulation {

namespace {

// The length of a sweep if the recording gives none.
constexpr double assumedSweepSeconds = 0.04;

} // namespace

SweepTimes SweepTimes::still()
{
    return {};
}

SweepTimes SweepTimes::atRate(double hertz)
{
    SweepTimes times;
    times.m_rate = hertz;
    return times;
}

SweepTimes SweepTimes::recorded(const QVector<double> &begins)
{
    SweepTimes times;
    if (begins.size() < 2)
        return times;
    for (double begin : begins)
        times.m_begins.append(begin - begins.first());
    const double last = times.m_begins.last();
    const double length = last - times.m_begins.at(begins.size() - 2);
    times.m_loopSeconds = last + (length > 0.0 ? length : assumedSweepSeconds);
    return times;
}

quint64 SweepTimes::sweepAt(double seconds) const
{
    if (!(seconds > 0.0))
        return 0;
    if (m_rate > 0.0)
        return quint64(std::min(std::floor(seconds * m_rate), 0x1p53));
    if (m_begins.isEmpty())
        return 0;
    const double loops = std::min(std::floor(seconds / m_loopSeconds), 0x1p40);
    const double phase = std::max(0.0, seconds - loops * m_loopSeconds);
    const auto next = std::upper_bound(m_begins.begin(), m_begins.end(), phase);
    return quint64(loops) * quint64(m_begins.size()) + quint64(next - m_begins.begin() - 1);
}

double SweepTimes::beginOf(quint64 sweep) const
{
    if (m_rate > 0.0)
        return double(sweep) / m_rate;
    if (m_begins.isEmpty())
        return sweep == 0 ? 0.0 : std::numeric_limits<double>::infinity();
    const quint64 count = quint64(m_begins.size());
    const quint64 loops = sweep / count;
    return double(loops) * m_loopSeconds + m_begins.at(int(sweep % count));
}

} // namespace simulation
