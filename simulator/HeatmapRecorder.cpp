#include "simulator/HeatmapRecorder.h"

#include <QDir>
#include <QFile>

#include <algorithm>

namespace simulation {

namespace {

// Readers delete what they have read; without one the oldest files have to go, or the memory they lie in
// fills up.
constexpr int mostFiles = 8;

} // namespace

HeatmapRecorder::HeatmapRecorder(const QString &directory, const HeatmapCounter &counter, int sweepsPerFile)
    : m_directory(directory)
    , m_counter(counter)
    , m_sweepsPerFile(std::max(sweepsPerFile, 1))
{
}

bool HeatmapRecorder::add(quint64 sweep, const QVector<double> &levels, QString *error)
{
    m_counter.add(levels);
    if (m_counter.sweeps() < m_sweepsPerFile)
        return true;
    const QString name = QStringLiteral("spectrum-%1.heatmap").arg(sweep, 12, 10, QLatin1Char('0'));
    const QString path = QDir(m_directory).filePath(name);
    const bool done = writeHeatmapFile(path, m_counter.heatmap(), error);
    m_counter.clear();
    if (done)
        m_written.append(path);
    while (m_written.size() > mostFiles)
        QFile::remove(m_written.takeFirst());
    return done;
}

} // namespace simulation
