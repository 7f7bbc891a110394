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

std::optional<QVector<Recording>> recordingsInFiles(const QStringList &paths, QString *error)
{
    QVector<Recording> recordings;
    for (const QString &path : paths) {
        const std::optional<Recording> recording = recordingInFile(path, error);
        if (!recording)
            return {};
        recordings.append(*recording);
    }
    return recordings;
}

double hertz(const QString &unit)
{
    static const QMap<QString, double> units{{"Hz", 1.0}, {"kHz", 1e3}, {"MHz", 1e6}, {"GHz", 1e9}};
    return units.value(unit, 0.0);
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
    const QVector<double> &values = valuesOf(recording);
    const Extent y = extentOf(values);
    const QString levels = y.missing == values.size() ? QStringLiteral("no y")
                                                      : QStringLiteral("y %1 to %2 %3")
                                                            .arg(y.lowest, 0, 'g', 6)
                                                            .arg(y.highest, 0, 'g', 6)
                                                            .arg(header.yUnits);
    int missing = 0;
    for (const QVector<double> &column : recording.numbers)
        missing += extentOf(column).missing;
    const QString count = header.kind == RecordingKind::Sweeps
                              ? QStringLiteral("%1 sweeps of %2").arg(header.sweeps).arg(header.points)
                              : QString::number(header.points);
    return QStringLiteral("%1, %2 points, x %3 to %4 %5, %6, %7 missing")
        .arg(header.kindName, count)
        .arg(x.lowest, 0, 'g', 8)
        .arg(x.highest, 0, 'g', 8)
        .arg(header.xUnits)
        .arg(levels)
        .arg(missing);
}

} // namespace simulation
