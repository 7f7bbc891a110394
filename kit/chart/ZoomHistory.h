#pragma once

#include "kit/chart/Span.h"

#include <optional>
#include <vector>

namespace graph {

// What of a chart is visible, in units of its first axes: a direction that shows everything has no span.
struct ZoomState
{
    std::optional<Span> x;
    std::optional<Span> y;
    bool following = false; // x is what the newest data says
};

inline bool operator==(const ZoomState &a, const ZoomState &b)
{
    return a.following == b.following && (a.following || a.x == b.x) && a.y == b.y;
}

// The zooms of a chart that can be gone back to, the present one among them.
class ZoomHistory
{
public:
    explicit ZoomHistory(const ZoomState &first = {}) { m_states.push_back(first); }

    const ZoomState &present() const { return m_states[m_place]; }
    bool canGoBack() const { return m_place > 0; }
    bool canGoForward() const { return m_place + 1 < m_states.size(); }

    // False when it is the present one already. Zooms that one could go forward to are forgotten.
    bool add(const ZoomState &state)
    {
        if (state == present())
            return false;
        m_states.resize(m_place + 1);
        m_states.push_back(state);
        if (m_states.size() > limit)
            m_states.erase(m_states.begin());
        m_place = m_states.size() - 1;
        return true;
    }
    const ZoomState &goBack() { return m_states[m_place -= canGoBack()]; }
    const ZoomState &goForward() { return m_states[m_place += canGoForward()]; }

private:
    static constexpr std::size_t limit = 100;

    std::vector<ZoomState> m_states;
    std::size_t m_place = 0;
};

} // namespace graph
