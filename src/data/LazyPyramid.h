#pragma once

#include "data/MinMaxPyramid.h"

#include <QVector>

#include <memory>

namespace graph {

// Decides when a pyramid over a data object's array pays. Building one costs about as much as reading the
// array once, so it waits until as many samples were handed out since the last change as the array holds:
// data that changes before each paint never pays for it, data that is panned and zoomed has it from the
// second paint on.
class LazyPyramid
{
public:
    // To be called at every change of the samples.
    void reset()
    {
        m_pyramid.reset();
        m_handedOut = 0;
    }

    // The pyramid for a view of `count` of the samples, or null while reading them straight costs less.
    template <typename Sample>
    std::shared_ptr<const MinMaxPyramid> forView(const QVector<Sample> &samples, int count)
    {
        if (m_pyramid || count < smallestView)
            return m_pyramid;
        if (m_handedOut >= samples.size())
            m_pyramid = std::make_shared<const MinMaxPyramid>(samples.constData(), samples.size());
        m_handedOut += count;
        return m_pyramid;
    }

private:
    // Views of fewer samples are read in the time of a few strokes of the painter.
    static constexpr int smallestView = 1 << 14;

    std::shared_ptr<const MinMaxPyramid> m_pyramid;
    qint64 m_handedOut = 0;
};

} // namespace graph
