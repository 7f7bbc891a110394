#pragma once

#include "data/PyramidOnDemand.h"

#include <memory>

namespace graph {

// The pyramid of a data object that changes.
class LazyPyramid
{
public:
    // To be called at every change of the samples. Views from before keep theirs.
    void reset()
    {
        if (m_pyramid.use_count() > 1)
            m_pyramid.reset();
        else if (m_pyramid)
            m_pyramid->forget();
    }

    // For a view of so many samples; null where they are read in the time of a few strokes of the painter.
    std::shared_ptr<PyramidOnDemand> forView(int count)
    {
        if (count < smallestView && !(m_pyramid && m_pyramid->isBuilt()))
            return nullptr;
        if (!m_pyramid)
            m_pyramid = std::make_shared<PyramidOnDemand>();
        return m_pyramid;
    }

private:
    static constexpr int smallestView = 1 << 14;

    std::shared_ptr<PyramidOnDemand> m_pyramid;
};

} // namespace graph
