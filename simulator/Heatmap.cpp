#include "simulator/Heatmap.h"

#include <QDataStream>
#include <QSaveFile>

namespace simulation {

QByteArray encoded(const Heatmap &heatmap)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << heatmap.columnCount << heatmap.rowCount << heatmap.referenceLevel << heatmap.rowStep;
    stream.writeRawData(reinterpret_cast<const char *>(heatmap.columnFrequencies.data()),
                        int(heatmap.columnFrequencies.size() * sizeof(quint32)));
    stream.writeRawData(reinterpret_cast<const char *>(heatmap.cells.data()), int(heatmap.cells.size()));
    return bytes;
}

bool writeHeatmapFile(const QString &path, const Heatmap &heatmap, QString *error)
{
    const QByteArray bytes = encoded(heatmap);
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit())
        return true;
    *error = QStringLiteral("%1: %2").arg(path, file.errorString());
    return false;
}

} // namespace simulation
