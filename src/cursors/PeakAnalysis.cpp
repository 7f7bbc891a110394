#include "cursors/PeakAnalysis.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <new>

namespace {

// Real traces settle within a few hundred passes; the bound is for inputs that nobody has foreseen.
constexpr int passLimit = 1000;

} // namespace

void PeakAnalysis::StraightLineFit::clear()
{
    m_pointCount = 0;
    m_n = m_sumX = m_sumY = m_sumXX = m_sumXY = 0.0;
}

void PeakAnalysis::StraightLineFit::add(double x, double y)
{
    ++m_pointCount;
    m_n += 1.0;
    m_sumX += x;
    m_sumY += y;
    m_sumXX += x * x;
    m_sumXY += x * y;
}

void PeakAnalysis::StraightLineFit::line(double &slope, double &intercept) const
{
    slope = intercept = 0.0;
    const double determinant = m_n * m_sumXX - m_sumX * m_sumX;
    if (m_pointCount < 2 || std::abs(determinant) < 5.0 * std::numeric_limits<double>::epsilon())
        return;
    slope = (m_n * m_sumXY - m_sumX * m_sumY) / determinant;
    intercept = (m_sumY * m_sumXX - m_sumX * m_sumXY) / determinant;
}

double PeakAnalysis::defaultYToleranceForPowerRange(double range)
{
    return range * 0.1;
}

double PeakAnalysis::defaultYToleranceForPowerRange(double a, double b)
{
    return defaultYToleranceForPowerRange(std::min(a, b));
}

bool PeakAnalysis::getNextPeak(bool forward, double tolerance, long count, const double *x, const double *y,
                               long &peakIndex, double &peakX, double &peakY)
{
    peakIndex = -1;
    peakX = peakY = 0.0;
    if (count <= 0 || !x || !y)
        return false;
    load(forward, count, x, y);
    long begin = -1;
    long end = -1;
    if (!getNextPeak(forward, tolerance, begin, end))
        return false;
    // The walk has bent its copies, the true summit is in the caller's samples.
    peakIndex = begin;
    for (long i = begin + 1; i <= end; ++i) {
        if (y[i] > y[peakIndex])
            peakIndex = i;
    }
    peakX = x[peakIndex];
    peakY = y[peakIndex];
    return true;
}

// Copies the samples so that the walk always starts at index 0.
void PeakAnalysis::load(bool forward, long count, const double *x, const double *y)
{
    if (m_capacity < count) {
        m_capacity = 0;
        m_xs.reset();
        m_ys.reset();
        if (count >= countLimit)
            throw std::bad_array_new_length();
        m_xs.reset(new double[static_cast<std::size_t>(count)]);
        m_ys.reset(new double[static_cast<std::size_t>(count)]);
        m_capacity = count;
    }
    m_count = count;
    if (forward) {
        std::copy(x, x + count, m_xs.get());
        std::copy(y, y + count, m_ys.get());
    } else {
        std::reverse_copy(x, x + count, m_xs.get());
        std::reverse_copy(y, y + count, m_ys.get());
    }
}

bool PeakAnalysis::getNextPeak(bool forward, double tolerance, long &begin, long &end)
{
    begin = end = -1;
    if (m_count < 1)
        return false;
    prepareSamples(tolerance);
    long last = m_count - 1;
    bool secondPass = false;
    for (int pass = 0; pass < passLimit && last > 0; ++pass) {
        bool settled = true;
        Bump bump{};
        if (runPass(tolerance, last, settled, bump) == PassResult::Peak) {
            begin = bump.valley;
            end = bump.end;
            if (secondPass || settled)
                break;
            secondPass = true;
        } else if (settled) {
            break;
        }
    }
    if (begin < 0)
        return false;
    if (!forward) {
        const long first = (m_count - 1) - end;
        end = (m_count - 1) - begin;
        begin = first;
    }
    return true;
}

// Runs that stay within the tolerance of their first sample are noise; straight, they give the passes less to
// do.
void PeakAnalysis::prepareSamples(double tolerance)
{
    if (m_count < 3)
        return;
    long start = 0;
    bool risen = false;
    for (long i = 1; i < m_count; ++i) {
        if (std::abs(m_ys[i] - m_ys[start]) <= tolerance && i < m_count - 1)
            continue;
        if (i - start > 2)
            straighten(start, i - 1);
        const double change = m_ys[i - 1] - m_ys[start];
        if (change > tolerance)
            risen = true;
        else if (risen && change < -tolerance)
            return;
        start = i;
    }
}

// One walk over the samples 0..last. Bumps that are too small are straightened on the way; settled becomes
// false when that may have joined slopes to a peak that another pass would find. Moves last to the end of the
// walkable samples when it meets a NaN.
PeakAnalysis::PassResult PeakAnalysis::runPass(double tolerance, long &last, bool &settled, Bump &bump)
{
    long from = 0;
    while (from < last) {
        bump.valley = descentEnd(from, last);
        bump.top = climbEnd(bump.valley, last);
        bump.end = descentEnd(bump.top, last);
        if (bump.end <= from) {
            last = from;
            break;
        }
        const double top = m_ys[bump.top];
        if (top - m_ys[bump.valley] >= tolerance && top - m_ys[bump.end] >= tolerance)
            return PassResult::Peak;
        if (bump.end > bump.valley + 1)
            straighten(bump.valley, bump.end);
        if (bump.top < last)
            settled = false;
        from = bump.end;
    }
    return PassResult::NoPeak;
}

long PeakAnalysis::descentEnd(long from, long last) const
{
    while (from < last && m_ys[from + 1] <= m_ys[from])
        ++from;
    return from;
}

long PeakAnalysis::climbEnd(long from, long last) const
{
    while (from < last && m_ys[from + 1] >= m_ys[from])
        ++from;
    return from;
}

void PeakAnalysis::straighten(long first, long last)
{
    m_fit.clear();
    for (long i = first; i <= last; ++i)
        m_fit.add(m_xs[i], m_ys[i]);
    double slope = 0.0;
    double intercept = 0.0;
    m_fit.line(slope, intercept);
    for (long i = first; i <= last; ++i)
        m_ys[i] = slope * m_xs[i] + intercept;
}
