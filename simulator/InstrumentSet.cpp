#include "InstrumentSet.h"

#include "simulator/AudioAnalyzer.h"
#include "simulator/DataLogger.h"
#include "simulator/FibreReflectometer.h"
#include "simulator/Oscilloscope.h"
#include "simulator/RecordedInstrument.h"
#include "simulator/RecordingFile.h"
#include "simulator/Spectrogram.h"
#include "simulator/SpectrumAnalyzer.h"

#include <algorithm>

using namespace simulation;

namespace {

constexpr double usualRate = 25.0;
// A reflectometer averages many pulses before it shows a trace.
constexpr double reflectometerRate = 4.0;

// Cells in the range of the levels of recorded sweeps; about the steps that recorders round to.
constexpr int replayedRows = 70;

// Rows of this height over the whole range of levels.
HeatmapCounter::Grid gridOf(const TraceDescription &description, double rowStep)
{
    HeatmapCounter::Grid grid;
    grid.topLevel = description.yRangeEnd;
    grid.rowStep = rowStep > 0.0 ? rowStep : 1.0;
    // Divided one by one: the difference of two levels may be beyond all numbers.
    grid.rows = qRound(description.yRangeEnd / grid.rowStep - description.yRangeBegin / grid.rowStep) + 1;
    return grid;
}

} // namespace

InstrumentSet::InstrumentSet(const CommandLine &line)
    : m_line(line)
{
}

// samples, sweepsPerSecond: where the command line gives none.
template <typename Kind>
void InstrumentSet::makeIfWanted(const char *name, int samples, double sweepsPerSecond)
{
    if (m_line.instruments.contains(QLatin1String(name)))
        add(std::make_unique<Kind>(m_line.samples.value_or(samples), m_line.seed,
                                   m_line.rate.value_or(sweepsPerSecond)));
}

ExitStatus InstrumentSet::make()
{
    const ExitStatus status = makeReplay();
    if (status != Done)
        return status;
    if (m_line.instruments.contains("analyzer"))
        makeAnalyzer();
    makeIfWanted<FibreReflectometer>("otdr", 20001, reflectometerRate);
    makeIfWanted<Oscilloscope>("scope", 10000, usualRate);
    makeIfWanted<AudioAnalyzer>("audio", 1999, usualRate);
    makeIfWanted<Spectrogram>("spectrogram", 501, usualRate);
    makeIfWanted<DataLogger>("logger", 8, usualRate);
    return Done;
}

ExitStatus InstrumentSet::start()
{
    for (const auto &service : m_services) {
        if (!service->start(m_line.held))
            return complain(QStringLiteral("the bus does not take the service \"%1\"").arg(service->name()),
                            Failed);
    }
    return Done;
}

void InstrumentSet::add(std::unique_ptr<Instrument> instrument)
{
    m_services.push_back(std::make_unique<InstrumentService>(std::move(instrument)));
}

ExitStatus InstrumentSet::makeReplay()
{
    QString error;
    const auto recordings = recordingsInFiles(m_line.replayFiles, &error);
    if (!recordings)
        return complain(error, Failed);
    error = RecordedInstrument::conflictOf(*recordings);
    if (!error.isEmpty())
        return complain(error, NotUnderstood);
    if (recordings->isEmpty())
        return Done;
    add(std::make_unique<RecordedInstrument>(*recordings, m_line.rate.value_or(0.0)));
    const bool isRecorded = m_line.heatmapDirectory.isEmpty() || m_line.instruments.contains("analyzer");
    return isRecorded ? Done : recordReplay(*recordings);
}

void InstrumentSet::makeAnalyzer()
{
    auto instrument = std::make_unique<SpectrumAnalyzer>(m_line.samples.value_or(1001), m_line.seed,
                                                         m_line.rate.value_or(usualRate));
    const SpectrumAnalyzer &analyzer = *instrument;
    add(std::move(instrument));
    if (m_line.heatmapDirectory.isEmpty())
        return;
    const TraceDescription description = analyzer.traces().first().description;
    recordSweeps(analyzer, HeatmapCounter(analyzer.samples(), analyzer.firstFrequency(),
                                          analyzer.frequencyStep(), gridOf(description, 1.0)));
}

ExitStatus InstrumentSet::recordReplay(const QVector<Recording> &recordings)
{
    const auto sweeps = std::find_if(recordings.begin(), recordings.end(), [](const Recording &recording) {
        return recording.header.kind == RecordingKind::Sweeps && hertz(recording.header.xUnits) > 0.0;
    });
    if (sweeps == recordings.end())
        return complain(QStringLiteral("--heatmap: no analyzer, and no recorded sweeps over a frequency"),
                        NotUnderstood);
    const Instrument &replay = m_services.back()->instrument();
    const QVector<Trace> traces = replay.traces();
    const TraceDescription description = traces.at(int(sweeps - recordings.begin())).description;
    const double toHertz = hertz(sweeps->header.xUnits);
    const double rowStep = description.yRangeEnd / replayedRows - description.yRangeBegin / replayedRows;
    recordSweeps(replay, HeatmapCounter(sweeps->header.points, sweeps->header.xFirst * toHertz,
                                        sweeps->header.xStep * toHertz, gridOf(description, rowStep)));
    return Done;
}

void InstrumentSet::recordSweeps(const Instrument &instrument, const HeatmapCounter &counter)
{
    m_recorder = std::make_unique<HeatmapRecorder>(m_line.heatmapDirectory, counter, m_line.heatmapSweeps);
    if (m_line.held) {
        recordHeldSweeps(instrument);
        return;
    }
    InstrumentService *service = m_services.back().get();
    QObject::connect(
        service, &InstrumentService::sweepPublished, service,
        [this](quint64 sweep, const QVector<SweptTrace> &traces) { record(sweep, traces.first().y); });
}

void InstrumentSet::recordHeldSweeps(const Instrument &instrument)
{
    // One file with the sweeps that would have led up to the held one.
    const quint64 before = quint64(m_line.heatmapSweeps) - 1;
    const quint64 first = *m_line.held - std::min(*m_line.held, before);
    for (quint64 sweep = first; sweep <= first + before; ++sweep)
        record(sweep, instrument.sweep(sweep).first().y);
}

void InstrumentSet::record(quint64 sweep, const QVector<double> &levels)
{
    QString error;
    const bool failed = !m_recorder->add(sweep, levels, &error);
    // One message is enough for a full or missing directory.
    if (failed && !m_isRecorderFailing)
        complain(error, Failed);
    m_isRecorderFailing = failed;
}
