#pragma once

#include "data/MinMaxPyramid.h"

#include <QtGlobal>

namespace graph {

// Answers the extremes of ranges of one array, which does not change, and decides when a pyramid over it pays.
// Building one takes about as long as reading the array once. Who asks for the extremes of most of it gets one at
// once: they are read anyway, and the next to ask need not read them again. Of smaller ranges, such as the
// pixel columns of a plot, each sample is read once first: data that changes before each paint never pays for a
// pyramid, data that is panned and zoomed has it from the second paint on.
class PyramidOnDemand
{
public:
    bool isBuilt() const { return m_isBuilt; }
    // Null while there is none.
    const MinMaxPyramid *pyramid() const { return m_isBuilt ? &m_pyramid : nullptr; }

    // The array is another one. Its pyramid takes the memory of this one.
    void forget()
    {
        m_pyramid.clear();
        m_isBuilt = false;
        m_read = 0;
    }

    // Of the samples first..end-1 of `size`.
    template <typename Sample> MinMax minMax(const Sample *samples, int size, int first, int end)
    {
        using graph::minMax;
        if (!m_isBuilt && (m_read >= size || end - first > size / 2)) {
            m_pyramid.extend(samples, size);
            m_isBuilt = true;
        }
        if (m_isBuilt)
            return m_pyramid.minMax(samples, first, end);
        m_read += end - first;
        return minMax(samples + first, end - first);
    }

private:
    MinMaxPyramid m_pyramid;
    qint64 m_read = 0; // samples
    bool m_isBuilt = false;
};

} // namespace graph
