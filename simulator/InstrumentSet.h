#pragma once

#include "CommandLine.h"
#include "Complaint.h"
#include "InstrumentService.h"
#include "simulator/HeatmapRecorder.h"
#include "simulator/Recording.h"

#include <memory>
#include <vector>

// The instruments and recordings that the command line asks for.
class InstrumentSet
{
public:
    explicit InstrumentSet(const CommandLine &line);

    // Not done, with a message on standard error, when a recording is of no use. Nothing is on the bus yet.
    ExitStatus make();
    // Not done, with a message on standard error, when the bus does not take one of them.
    ExitStatus start();

private:
    void add(std::unique_ptr<simulation::Instrument> instrument);
    ExitStatus makeReplay();
    template <typename Kind> void makeIfWanted(const char *name, int samples, double sweepsPerSecond);
    void makeAnalyzer();
    ExitStatus recordReplay(const QVector<simulation::Recording> &recordings);
    // Sweeps of the instrument that was added last go into heat map files.
    void recordSweeps(const simulation::Instrument &instrument, const simulation::HeatmapCounter &counter);
    void recordHeldSweeps(const simulation::Instrument &instrument);
    void record(quint64 sweep, const QVector<double> &levels);

    CommandLine m_line;
    std::unique_ptr<simulation::HeatmapRecorder> m_recorder;
    bool m_isRecorderFailing = false;
    std::vector<std::unique_ptr<InstrumentService>> m_services;
};
