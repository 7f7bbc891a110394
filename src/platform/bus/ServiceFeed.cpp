#include "platform/bus/ServiceFeed.h"

#include <chrono>

namespace {

using Lock = std::lock_guard<std::mutex>;

// A reader that does not come must not let lines pile up.
constexpr int maxNotes = 16;

} // namespace

ServiceFeed::Status ServiceFeed::status() const
{
    const Lock lock(m_mutex);
    return m_status;
}

void ServiceFeed::setStatus(State state, const QString &text)
{
    const Lock lock(m_mutex);
    m_status.state = state;
    m_status.text = text;
    if (state != Asking)
        m_status.isLate = false;
    m_changed.notify_all();
}

void ServiceFeed::setLate()
{
    const Lock lock(m_mutex);
    m_status.isLate = true;
    m_changed.notify_all();
}

ServiceFeed::Status ServiceFeed::waitFor(int time)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    m_changed.wait_for(lock, std::chrono::milliseconds(time),
                       [this] { return m_status.state != Asking || m_status.isLate; });
    return m_status;
}

void ServiceFeed::addNote(const QString &note)
{
    const Lock lock(m_mutex);
    if (m_notes.size() < maxNotes)
        m_notes.append(note);
}

QStringList ServiceFeed::takeNotes()
{
    const Lock lock(m_mutex);
    return std::exchange(m_notes, {});
}

bool ServiceFeed::hasNotes() const
{
    const Lock lock(m_mutex);
    return !m_notes.isEmpty();
}
