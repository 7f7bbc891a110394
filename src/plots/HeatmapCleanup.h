#pragma once

class QDateTime;
class QString;

namespace graph {

// Deletes the heat map files in a directory that were modified at `time` or before. Does nothing for an empty
// name, which would mean the working directory, or for an invalid time.
//
// A producer may have left any number of files, or the directory may hold many others: after the first
// entries the rest is left to another thread, one for each directory, which waitForHeatmapCleanup() waits for.
void removeHeatmapFiles(const QString &directory, const QDateTime &time);
void waitForHeatmapCleanup();

} // namespace graph
