#pragma once

#include "common/Export.h"
#include "kit/chart/Span.h"

#include <QtGlobal>

namespace graph {

// Gives data that goes on growing at its end some room to grow into, so that an axis does not move with each
// sample.
class GRAPH_CHARTS_EXPORT LiveEnd
{
public:
    // The data with the room that it has now; now: in milliseconds, of a clock that does not go back.
    Span withRoom(const Span &data, qint64 now);
    // Whether there is room, which goes when the data has stopped growing.
    bool hasRoom() const { return m_end > m_data.to; }

private:
    Span m_data;
    double m_end = 0.0;
    qint64 m_changedAt = 0;
    int m_growths = 0;
};

} // namespace graph
