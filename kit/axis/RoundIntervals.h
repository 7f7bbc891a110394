#pragma once

#include <cmath>

namespace graph {

// Intervals from a least one upwards that are 1, 2 or 5 times a power of ten.
class RoundIntervals
{
public:
    explicit RoundIntervals(double least)
        : m_exponent(int(std::floor(std::log10(least) - 1e-9)))
    {
        while (value() < least)
            next();
    }

    // The double nearest to the decimal number.
    double value() const
    {
        const double power = std::pow(10.0, std::abs(m_exponent));
        return m_exponent < 0 ? m_mantissa / power : m_mantissa * power;
    }
    // How many equal parts of it are round as well.
    int parts() const { return m_mantissa == 2 ? 4 : 5; }
    void next()
    {
        m_mantissa = m_mantissa == 1 ? 2 : m_mantissa == 2 ? 5 : 1;
        m_exponent += m_mantissa == 1;
    }

private:
    int m_exponent;
    int m_mantissa = 1;
};

} // namespace graph
