#include "platform/bus/Complaints.h"

#include "platform/bus/BusLimits.h"

bool Complaints::isDue(Kind kind)
{
    const auto now = std::chrono::steady_clock::now();
    if (now < m_next[kind])
        return false;
    m_next[kind] = now + std::chrono::milliseconds(graph::complaintInterval);
    return true;
}
