#include "Replay.h"

#include "simulator/RecordedInstrument.h"
#include "simulator/RecordingFile.h"

#include <QFileInfo>

#include <algorithm>

using namespace simulation;

namespace gallery {

namespace {

bool isTrace(const Recording &recording)
{
    return recording.header.kind != RecordingKind::Events && recording.header.kind != RecordingKind::Regions;
}

// Units and names come from files; long ones would leave no room for the chart.
QString shortened(const QString &text)
{
    const int longest = 16;
    return text.size() > longest ? text.left(longest - 1) + QChar(0x2026) : text;
}

// Makes the range from `begin` to `end` in the description hold an extent of so many samples.
void widen(QVariantMap *description, const QString &begin, const QString &end, const Extent &extent,
           int samples)
{
    if (extent.missing == samples)
        return;
    const bool isFirst = !description->contains(begin);
    description->insert(begin, isFirst ? extent.lowest
                                       : std::min(extent.lowest, description->value(begin).toDouble()));
    description->insert(end, isFirst ? extent.highest
                                     : std::max(extent.highest, description->value(end).toDouble()));
}

void describe(QVariantMap *description, const Recording &recording)
{
    const RecordingHeader &header = recording.header;
    const QVector<double> &values = valuesOf(recording);
    const auto setText = [description](const char *key, const QString &text) {
        if (description->value(key).toString().isEmpty())
            description->insert(key, shortened(text));
    };
    setText("xLabel", header.xLabel);
    setText("xUnit", header.xUnits);
    setText("yLabel", header.yLabel);
    setText("yUnit", header.yUnits);
    if (header.points > 0)
        widen(description, "xBegin", "xEnd", xExtentOf(recording), -1);
    widen(description, "yBegin", "yEnd", extentOf(values), values.size());
}

} // namespace

bool Replay::read(const QStringList &paths, QString *error)
{
    auto recordings = recordingsInFiles(paths, error);
    if (recordings)
        *error = RecordedInstrument::conflictOf(*recordings);
    if (!error->isEmpty())
        return false;
    for (const QString &path : paths)
        files.append(QFileInfo(path).absoluteFilePath());
    // The trace first: its names and units count.
    std::stable_partition(recordings->begin(), recordings->end(), isTrace);
    for (const Recording &recording : *recordings) {
        const RecordingHeader &header = recording.header;
        describe(&description, recording);
        if (header.kind == RecordingKind::Events)
            events = header.points;
        else if (header.kind == RecordingKind::Regions)
            regions = header.points;
        if (!isTrace(recording))
            continue;
        samples = header.sweeps > 0 ? header.points : 0;
        hasSpectra = header.kind == RecordingKind::Sweeps && samples > 1 && hertz(header.xUnits) > 0.0;
        description.insert("equallySpaced", header.equallySpaced);
        description.insert("xFirst", header.xFirst);
        description.insert("xStep", header.xStep);
    }
    description.insert("samples", samples);
    description.insert("events", events);
    description.insert("regions", regions);
    return true;
}

} // namespace gallery
