#include "plots/HeatmapCleanup.h"

#include <QDateTime>
#include <QDir>

namespace graph {

void removeHeatmapFiles(const QString &directory, const QDateTime &time)
{
    if (directory.isEmpty() || !time.isValid())
        return;
    const QFileInfoList files = QDir(directory).entryInfoList(
        {QStringLiteral("*.heatmap")}, QDir::Files | QDir::CaseSensitive, QDir::Time | QDir::Reversed);
    for (const QFileInfo &file : files) {
        if (file.lastModified() <= time)
            QFile::remove(file.filePath());
    }
}

} // namespace graph
