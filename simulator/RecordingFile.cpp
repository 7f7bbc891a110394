#include "simulator/RecordingFile.h"

#include "simulator/RecordingReader.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cmath>

namespace simulation {

std::optional<Recording> recordingInFile(const QString &path, QString *error)
{
    QFile file(path);
    if (QFileInfo(path).isDir()) {
        *error = QStringLiteral("%1: this is a directory").arg(path);
        return {};
    }
    if (!file.open(QIODevice::ReadOnly)) {
        *error = QStringLiteral("%1: %2").arg(path, file.errorString());
        return {};
    }
    ReadingError readingError;
    std::optional<Recording> recording = recordingFrom(file, &readingError);
    if (!recording && readingError.line > 0)
        *error =
            QStringLiteral("%1:%2: %3").arg(path, QString::number(readingError.line), readingError.message);
    else if (!recording)
        *error = QStringLiteral("%1: %2").arg(path, readingError.message);
    return recording;
}

Extent extentOf(const QVector<double> &samples)
{
    Extent extent;
    bool isFirst = true;
    for (double sample : samples) {
        if (std::isnan(sample)) {
            ++extent.missing;
            continue;
        }
        extent.lowest = isFirst ? sample : std::min(extent.lowest, sample);
        extent.highest = isFirst ? sample : std::max(extent.highest, sample);
        isFirst = false;
    }
    return extent;
}

Extent xExtentOf(const Recording &recording)
{
    const RecordingHeader &header = recording.header;
    if (recording.numbers.contains("x"))
        return extentOf(recording.numbers.value("x"));
    if (header.kind == RecordingKind::Regions)
        return {extentOf(recording.numbers.value("begin")).lowest,
                extentOf(recording.numbers.value("end")).highest, 0};
    return {header.xFirst, header.xFirst + std::max(0, header.points - 1) * header.xStep, 0};
}

const QVector<double> &valuesOf(const Recording &recording)
{
    static const QVector<double> none;
    const auto values =
        recording.numbers.constFind(recording.header.kind == RecordingKind::Regions ? "value" : "y");
    return values == recording.numbers.constEnd() ? none : *values;
}

QString summaryOf(const Recording &recording)
{
    const RecordingHeader &header = recording.header;
    const Extent x = xExtentOf(recording);
    const Extent y = extentOf(valuesOf(recording));
    const QString count = header.kind == RecordingKind::Sweeps
                              ? QStringLiteral("%1 sweeps of %2").arg(header.sweeps).arg(header.points)
                              : QString::number(header.points);
    return QStringLiteral("%1, %2 points, x %3 to %4 %5, y %6 to %7 %8, %9 missing")
        .arg(header.kindName, count)
        .arg(x.lowest, 0, 'g', 8)
        .arg(x.highest, 0, 'g', 8)
        .arg(header.xUnits)
        .arg(y.lowest, 0, 'g', 6)
        .arg(y.highest, 0, 'g', 6)
        .arg(header.yUnits)
        .arg(y.missing);
}

} // namespace simulation
