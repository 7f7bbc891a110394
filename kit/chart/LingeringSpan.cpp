#include "kit/chart/LingeringSpan.h"

namespace graph {

namespace {

// That many changes with no longer pause than a period between them are those of live data.
constexpr int liveChanges = 4;

} // namespace

Span LingeringSpan::withPast(const Span &data, qint64 now)
{
    const bool isQuiet = now - m_changedAt >= period;
    if (data != m_data) {
        m_changes = isQuiet ? 0 : m_changes + 1;
        m_changedAt = now;
        m_data = data;
    } else if (isQuiet) {
        m_changes = 0;
    }
    if (m_changes < liveChanges) {
        m_past = m_present = data;
        m_began = now;
    } else if (now - m_began >= period) {
        m_past = m_present;
        m_present = data;
        m_began = now;
    } else {
        m_present = m_present.united(data);
    }
    const Span all = m_past.united(m_present);
    m_lingers = all != data;
    return all;
}

} // namespace graph
