#pragma once

#include "simulator/HeatmapCounter.h"

#include <QStringList>

namespace simulation {

// Writes a heat map file after every so many sweeps and keeps the directory small.
class HeatmapRecorder
{
public:
    HeatmapRecorder(const QString &directory, const HeatmapCounter &counter, int sweepsPerFile);

    // False, and the reason, when a file was due and could not be written; its sweeps are dropped then.
    bool add(quint64 sweep, const QVector<double> &levels, QString *error);

private:
    QString m_directory;
    HeatmapCounter m_counter;
    int m_sweepsPerFile;
    QStringList m_written;
};

} // namespace simulation
