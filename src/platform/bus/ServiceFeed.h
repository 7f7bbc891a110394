#pragma once

#include "platform/bus/ItemStore.h"

#include <QString>
#include <QStringList>

#include <condition_variable>
#include <mutex>

// What the bus thread and the application's thread share about one service that is followed.
class ServiceFeed
{
public:
    enum State { Asking, Answered, Absent, NoBus, Failed };

    struct Status
    {
        State state = Asking;
        bool isLate = false; // asked for longer than a user should wait
        QString text;        // why, of NoBus and Failed
    };

    ItemStore &items() { return m_items; }

    Status status() const;
    // Does not make a service that is late be on time again; Answered does.
    void setStatus(State state, const QString &text = QString());
    void setLate();
    // Returns when the service is no longer being asked, or is late, or the time (ms) is up.
    Status waitFor(int time);

    // Lines for the log of the application's thread.
    void addNote(const QString &note);
    QStringList takeNotes();
    bool hasNotes() const;

private:
    ItemStore m_items;
    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    Status m_status;
    QStringList m_notes;
};
