#pragma once

class QDateTime;
class QString;

namespace graph {

// Deletes the heat map files in a directory that were modified at `time` or before, the oldest first. Does
// nothing for an empty name, which would mean the working directory, or for an invalid time.
void removeHeatmapFiles(const QString &directory, const QDateTime &time);

} // namespace graph
