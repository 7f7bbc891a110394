#pragma once

#include "common/Export.h"
#include "kit/chart/Span.h"

#include <QtGlobal>

namespace graph {

// How far live data reaches, with what it reached a moment ago: bursts and pauses that take turns do not make
// an axis jump. Data that changes now and then is taken as it is.
class GRAPH_CHARTS_EXPORT LingeringSpan
{
public:
    // now: in milliseconds, of a clock that does not go back.
    Span withPast(const Span &data, qint64 now);
    // Whether there is more than the data, so that the answer will be another one after a period without a
    // change.
    bool lingers() const { return m_lingers; }
    static constexpr int period = 1000; // milliseconds

private:
    Span m_data;
    // Of the present period and of the one before.
    Span m_present;
    Span m_past;
    qint64 m_began = 0;
    qint64 m_changedAt = 0;
    int m_changes = 0;
    bool m_lingers = false;
};

} // namespace graph
