#include "TraceHold.h"

#include <algorithm>
#include <cmath>

namespace gallery {

namespace {

// std::fmax and std::fmin prefer a number to NaN.
void hold(QVector<double> *held, const QVector<double> &levels, double (*chosen)(double, double))
{
    std::transform(held->cbegin(), held->cend(), levels.cbegin(), held->begin(), chosen);
}

} // namespace

void TraceHold::add(const QVector<double> &levels)
{
    if (levels.isEmpty())
        return;
    if (m_sweeps == 0 || levels.size() != m_maximum.size()) {
        m_maximum = m_minimum = levels;
        m_sweeps = 1;
    } else {
        hold(&m_maximum, levels, std::fmax);
        hold(&m_minimum, levels, std::fmin);
        ++m_sweeps;
    }
    emit changed();
}

void TraceHold::reset()
{
    m_maximum.clear();
    m_minimum.clear();
    m_sweeps = 0;
    emit changed();
}

} // namespace gallery
