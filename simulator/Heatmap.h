#pragma once

#include <QByteArray>
#include <QString>

#include <vector>

namespace simulation {

// How often each level was seen at each frequency, as codes from 0 (never) to 7 (always).
struct Heatmap
{
    quint16 columnCount = 0;
    quint16 rowCount = 0;
    double referenceLevel = 0.0; // centre of the top row, dBmV
    double rowStep = 0.0;
    std::vector<quint32> columnFrequencies; // Hz, ascending
    std::vector<quint8> cells;              // row by row from the top
};

// The file's contents: header in big-endian order, then both arrays as they lie in memory.
QByteArray encoded(const Heatmap &heatmap);

// Writes the file under another name first and renames it then, so that no reader ever sees a part of it.
// False, and the reason, when that fails.
bool writeHeatmapFile(const QString &path, const Heatmap &heatmap, QString *error);

} // namespace simulation
