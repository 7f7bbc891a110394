#pragma once

#include "common/PixelMapping.h"
#include "data/LeadingCount.h"
#include "data/SampleSpan.h"

namespace graph {

// The columns of samples: exactly mapping.column(), however that is rounded. On a logarithmic axis the values where
// columns begin follow each other by a factor. Where samples are asked for in the order of columns it takes no logarithm
// to find theirs.
class ColumnSearch
{
public:
    ColumnSearch(const SampleSpan &samples, const PixelMapping &mapping)
        : m_samples(samples)
        , m_mapping(mapping)
        , m_factor(mapping.isLinearX() ? 1.0 : std::exp(1.0 / mapping.scaleX()))
        , m_sign(m_factor < 1.0 ? -1.0 : 1.0)
    {
    }

    int columnOf(int i)
    {
        const double x = m_samples.x(i);
        if (m_mapping.isLinearX())
            return m_mapping.linearColumn(x);
        const double place = m_sign * x;
        const bool isForward = m_column >= 0 && place >= m_place;
        m_place = place;
        for (int step = 0; isForward && step < mostSteps; ++step) {
            if (place < m_surelyIn)
                return m_column;
            if (!(place > m_surelyBeyond))
                break;
            goOn();
        }
        goTo(m_mapping.column(x));
        return m_column;
    }

    // The first index from `from` on whose sample lies right of `column`, of samples of ascending x, or descending where
    // x falls from left to right. Columns never fall along them, so this can search, outwards from `guess` samples after
    // `from`.
    int endOf(int column, int from, int guess)
    {
        if (m_mapping.isLinearX())
            return endOf(from, guess, m_mapping.upToColumn(column));
        if (column == m_column + 1 && column > 0)
            goOn();
        else if (column != m_column)
            goTo(column);
        return endOf(from, m_samples.near(m_border, from + guess) - from, [this](double x) {
            const double place = m_sign * x;
            if (place < m_surelyIn || place > m_surelyBeyond)
                return place < m_surelyIn;
            return m_mapping.column(x) <= m_column;
        });
    }

private:
    // Columns that are passed one by one.
    static constexpr int mostSteps = 64;
    // Of a border, for each part of it: much more than the roundings of a thousand steps and of any logarithm add up to,
    // much less than a column is wide.
    static constexpr double uncertain = 1e-11;

    template <typename Predicate> int endOf(int from, int start, const Predicate &isUpToColumn) const
    {
        return from + leadingCount(m_samples.size() - from, start,
                                   [&](int i) { return isUpToColumn(m_samples.x(from + i)); });
    }

    void goTo(int column)
    {
        m_column = column;
        setBorder(m_mapping.columnBorder(column));
        m_stepsLeft = 1000;
    }

    // Not to column 0, which has two sides.
    void goOn()
    {
        if (--m_stepsLeft < 0 || m_column >= pixelLimit - 1) {
            goTo(m_column + 1);
            return;
        }
        ++m_column;
        setBorder(m_border * m_factor);
    }

    void setBorder(double border)
    {
        m_border = border;
        m_surelyIn = border * (m_sign - uncertain);
        m_surelyBeyond = border * (m_sign + uncertain);
    }

    const SampleSpan &m_samples;
    const PixelMapping &m_mapping;
    double m_factor; // from one border to the next
    double m_sign;
    double m_place = 0.0;           // of the last sample: x, or -x where x falls from left to right
    int m_column = -pixelLimit - 1; // none yet
    double m_border = 0.0;          // where the next column begins
    double m_surelyIn = 0.0;
    double m_surelyBeyond = 0.0;
    int m_stepsLeft = 0;
};

} // namespace graph
