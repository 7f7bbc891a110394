#pragma once

#include <QVector>

namespace simulation {

// When each sweep of an instrument begins, in seconds from its start. Always worked out from the sweep
// number, so that late timers neither add up nor cause a burst: sweeps that were missed are left out.
class SweepTimes
{
public:
    // One sweep that stays.
    static SweepTimes still();
    // `hertz` is finite and above 0.
    static SweepTimes atRate(double hertz);
    // Begins that never fall; played again and again, the last sweep as long as the one before it. Empty
    // gives still().
    static SweepTimes recorded(const QVector<double> &begins);

    // The sweep that runs at a time; 0 for a time that is negative or NaN.
    quint64 sweepAt(double seconds) const;
    // Infinite when the sweep never comes.
    double beginOf(quint64 sweep) const;

private:
    double m_rate = 0.0;
    double m_loopSeconds = 0.0;
    QVector<double> m_begins;
};

} // namespace simulation
