#pragma once

#include <QtGlobal>

#include <algorithm>

namespace graph {

// How many pixels a cursor key moves the cursor: 1 for single presses, growing to 19 while the key is held or
// pressed in quick succession.
class KeyAcceleration
{
public:
    static constexpr int slowest = 1;
    static constexpr int fastest = 19;
    static constexpr int quickPressMs = 500;

    // The step of a key event at a time in milliseconds. The other direction starts again from the slowest.
    int step(bool backwards, bool autoRepeat, qint64 nowMs)
    {
        if (backwards != m_backwards)
            m_step = slowest;
        m_backwards = backwards;
        const qint64 elapsedMs = nowMs - m_lastMs;
        m_lastMs = nowMs;
        m_step = std::min(autoRepeat ? repeated() : pressed(elapsedMs), fastest);
        return m_step;
    }

private:
    // 2, 4, 6, 9, 13, 19, 19, ... from the slowest.
    int repeated() const { return m_step < 4 ? m_step * 2 : m_step + m_step / 2; }

    // The quicker a press follows the last event, the longer. Less than a millisecond counts as one; after
    // quickPressMs it starts again from the slowest.
    int pressed(qint64 elapsedMs) const
    {
        if (elapsedMs > quickPressMs)
            return slowest;
        return quickPressMs * m_step / static_cast<int>(std::max<qint64>(elapsedMs, 1));
    }

    int m_step = slowest;
    bool m_backwards = false;
    qint64 m_lastMs = 0;
};

} // namespace graph
