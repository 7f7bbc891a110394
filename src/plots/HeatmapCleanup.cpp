#include "plots/HeatmapCleanup.h"

#include <QDateTime>
#include <QDirIterator>
#include <QHash>
#include <QThreadPool>

#include <limits>
#include <mutex>
#include <utility>

namespace graph {

namespace {

// Entries looked at on the thread that asks: a few milliseconds.
constexpr int entriesAtOnce = 250;

// False when there are more entries. Files that are deleted along the way do not hide others from the iterator;
// in no particular order, because each is judged by itself.
bool removeFiles(const QString &directory, const QDateTime &time, int entries)
{
    QDirIterator iterator(directory, QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot);
    for (int i = 0; iterator.hasNext(); ++i) {
        if (i == entries)
            return false;
        iterator.next();
        if (!iterator.fileName().endsWith(QLatin1String(".heatmap")))
            continue;
        const QFileInfo file = iterator.fileInfo();
        if (file.isFile() && file.lastModified() <= time)
            QFile::remove(file.filePath());
    }
    return true;
}

// The directories that a thread is at work in. One that is asked for again meanwhile is gone through once more.
class Background
{
public:
    // False when no thread is at work there.
    bool isLeftTo(const QString &directory, const QDateTime &time)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        const auto found = m_times.find(directory);
        if (found == m_times.end())
            return false;
        *found = found->isValid() ? qMax(*found, time) : time;
        return true;
    }

    void start(const QString &directory, const QDateTime &time)
    {
        {
            const std::lock_guard<std::mutex> lock(m_mutex);
            m_times.insert(directory, time);
        }
        m_threads.start([this, directory] { work(directory); });
    }

    void wait() { m_threads.waitForDone(); }

private:
    void work(const QString &directory)
    {
        for (;;) {
            QDateTime time;
            {
                const std::lock_guard<std::mutex> lock(m_mutex);
                time = std::exchange(m_times[directory], QDateTime());
                if (!time.isValid()) {
                    m_times.remove(directory);
                    return;
                }
            }
            removeFiles(directory, time, std::numeric_limits<int>::max());
        }
    }

    std::mutex m_mutex;
    QHash<QString, QDateTime> m_times; // invalid once a thread has taken it
    QThreadPool m_threads;
};

Background &background()
{
    static Background instance;
    return instance;
}

} // namespace

void removeHeatmapFiles(const QString &directory, const QDateTime &time)
{
    if (directory.isEmpty() || !time.isValid() || background().isLeftTo(directory, time))
        return;
    if (!removeFiles(directory, time, entriesAtOnce))
        background().start(directory, time);
}

void waitForHeatmapCleanup()
{
    background().wait();
}

} // namespace graph
