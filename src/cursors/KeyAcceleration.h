#pragma once

#include <QtGlobal>

#include <algorithm>

namespace graph {

// How many pixels a cursor key moves the cursor: 1 for single presses, growing to 19 while the key is held or
// pressed in quick succession. Keeps the current step only; the caller measures the time.
class KeyAcceleration
{
public:
    static constexpr int slowest = 1;
    static constexpr int fastest = 19;
    static constexpr int quickPressMs = 500;

    int step() const { return m_step; }
    void reset() { m_step = slowest; }

    // The step of an automatic repeat of a held key, from the slowest: 2, 4, 6, 9, 13, 19, 19, ...
    int repeated()
    {
        m_step = m_step < 4 ? m_step * 2 : std::min(m_step + m_step / 2, fastest);
        return m_step;
    }

    // The step of a new press, elapsedMs milliseconds after the last one: the quicker, the longer.
    // Less than a millisecond counts as one; after quickPressMs it starts again from the slowest.
    int pressed(qint64 elapsedMs)
    {
        if (elapsedMs > quickPressMs)
            m_step = slowest;
        else
            m_step =
                std::min(quickPressMs * m_step / static_cast<int>(std::max<qint64>(elapsedMs, 1)), fastest);
        return m_step;
    }

private:
    int m_step = slowest;
};

} // namespace graph
