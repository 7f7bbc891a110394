#include "simulator/RecordedInstrument.h"

#include "simulator/RecordingFile.h"

#include <cmath>

namespace simulation {

namespace {

TraceDescription descriptionOf(const Recording &recording)
{
    const RecordingHeader &header = recording.header;
    const Extent x = xExtentOf(recording);
    const Extent y = extentOf(valuesOf(recording));
    TraceDescription description;
    description.label = header.title;
    description.xLabel = header.xLabel;
    description.yLabel = header.yLabel;
    description.xUnits = header.xUnits;
    description.yUnits = header.yUnits;
    description.xRangeBegin = x.lowest;
    description.xRangeEnd = x.highest;
    description.yRangeBegin = y.lowest;
    description.yRangeEnd = y.highest;
    description.equallySpaced = header.equallySpaced;
    description.xFirst = header.xFirst;
    description.xIncrement = header.xStep;
    return description;
}

Trace eventTable(const Recording &recording)
{
    const QVector<double> losses = recording.numbers.value("loss");
    const QStringList kinds = recording.texts.value("kind");
    QStringList labels;
    for (int i = 0; i < kinds.size(); ++i)
        labels.append(std::isnan(losses.at(i))
                          ? kinds.at(i)
                          : QStringLiteral("%1 %2 dB").arg(kinds.at(i)).arg(losses.at(i), 0, 'f', 2));
    return {RecordedInstrument::prefixOf(RecordingKind::Events),
            descriptionOf(recording),
            {{QStringLiteral("xData"), recording.numbers.value("x")},
             {QStringLiteral("yData"), recording.numbers.value("y")},
             {QStringLiteral("loss"), losses},
             {QStringLiteral("reflectance"), recording.numbers.value("reflectance")},
             {QStringLiteral("slopeBefore"), recording.numbers.value("slope_before")}},
            {{QStringLiteral("labels"), labels}, {QStringLiteral("icons"), kinds}}};
}

Trace regionTable(const Recording &recording)
{
    return {RecordedInstrument::prefixOf(RecordingKind::Regions),
            descriptionOf(recording),
            {{QStringLiteral("begin"), recording.numbers.value("begin")},
             {QStringLiteral("end"), recording.numbers.value("end")},
             {QStringLiteral("value"), recording.numbers.value("value")}},
            {{QStringLiteral("names"), recording.texts.value("name")},
             {QStringLiteral("types"), recording.texts.value("type")}}};
}

} // namespace

RecordedInstrument::RecordedInstrument(const QVector<Recording> &recordings, double sweepsPerSecond)
    : m_recordings(recordings)
    , m_rate(sweepsPerSecond)
{
}

QString RecordedInstrument::prefixOf(RecordingKind kind)
{
    switch (kind) {
    case RecordingKind::Events:
        return QStringLiteral("events");
    case RecordingKind::Regions:
        return QStringLiteral("regions");
    case RecordingKind::Points:
    case RecordingKind::Series:
    case RecordingKind::Sweeps:
        break;
    }
    return QStringLiteral("trace");
}

QString RecordedInstrument::conflictOf(const QVector<Recording> &recordings)
{
    QStringList prefixes;
    for (const Recording &recording : recordings) {
        const QString prefix = prefixOf(recording.header.kind);
        if (prefixes.contains(prefix))
            return QStringLiteral("two recordings would be the replay's %1").arg(prefix);
        prefixes.append(prefix);
    }
    return QString();
}

QString RecordedInstrument::serviceName() const
{
    return QStringLiteral("replay");
}

QVector<Trace> RecordedInstrument::traces() const
{
    QVector<Trace> traces;
    for (const Recording &recording : m_recordings) {
        switch (recording.header.kind) {
        case RecordingKind::Events:
            traces.append(eventTable(recording));
            break;
        case RecordingKind::Regions:
            traces.append(regionTable(recording));
            break;
        case RecordingKind::Points:
            traces.append({prefixOf(recording.header.kind),
                           descriptionOf(recording),
                           {{QStringLiteral("xData"), recording.numbers.value("x")}},
                           {}});
            break;
        case RecordingKind::Series:
        case RecordingKind::Sweeps:
            traces.append({prefixOf(recording.header.kind), descriptionOf(recording), {}, {}});
            break;
        }
    }
    return traces;
}

QVector<SweptTrace> RecordedInstrument::sweep(quint64 number) const
{
    const Recording *recording = trace();
    if (!recording)
        return {};
    const RecordingHeader &header = recording->header;
    const QVector<double> &y = valuesOf(*recording);
    if (header.kind != RecordingKind::Sweeps || header.sweeps == 0)
        return {{prefixOf(header.kind), y}};
    const int row = int(number % quint64(header.sweeps));
    return {{prefixOf(header.kind), y.mid(row * header.points, header.points)}};
}

SweepTimes RecordedInstrument::times() const
{
    const Recording *recording = trace();
    if (!recording || recording->header.kind != RecordingKind::Sweeps)
        return SweepTimes::still();
    return m_rate > 0.0 ? SweepTimes::atRate(m_rate) : SweepTimes::recorded(recording->numbers.value("t"));
}

const Recording *RecordedInstrument::trace() const
{
    for (const Recording &recording : m_recordings) {
        if (prefixOf(recording.header.kind) == QLatin1String("trace"))
            return &recording;
    }
    return nullptr;
}

} // namespace simulation
