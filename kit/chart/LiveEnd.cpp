#include "kit/chart/LiveEnd.h"

namespace graph {

namespace {

// That many growths with no longer pause between them are those of live data; what is loaded in a few steps
// is not.
constexpr int liveGrowths = 4;
constexpr qint64 longestPause = 1000;
constexpr double room = 0.25; // of the data's span

} // namespace

Span LiveEnd::withRoom(const Span &data, qint64 now)
{
    if (data == m_data) {
        if (now - m_changedAt >= longestPause)
            m_end = data.to;
        return {data.from, m_end};
    }
    const bool grows = data.from == m_data.from && data.to > m_data.to;
    m_growths = grows && now - m_changedAt < longestPause ? m_growths + 1 : 0;
    if (!grows || data.to > m_end)
        m_end = m_growths < liveGrowths ? data.to : data.to + room * data.length();
    m_changedAt = now;
    m_data = data;
    return {data.from, m_end};
}

} // namespace graph
