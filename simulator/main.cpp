#include "BusWatch.h"
#include "CommandLine.h"
#include "Complaint.h"
#include "InstrumentSet.h"
#include "StopSignals.h"
#include "simulator/RecordingFile.h"

#include <QCoreApplication>
#include <QTextStream>

#include <cstdio>

namespace {

ExitStatus checkFiles(const QStringList &paths)
{
    ExitStatus status = Done;
    for (const QString &path : paths) {
        QString error;
        const auto recording = simulation::recordingInFile(path, &error);
        if (recording)
            QTextStream(stdout) << path << ": " << simulation::summaryOf(*recording) << '\n';
        else
            status = complain(error, Failed);
    }
    return status;
}

int run(QCoreApplication *application, const CommandLine &line)
{
    InstrumentSet instruments(line);
    ExitStatus status = instruments.make();
    if (status != Done)
        return status;

    StopSignals stopSignals;
    stopSignals.listen();
    QObject::connect(&stopSignals, &StopSignals::stopRequested, application, &QCoreApplication::quit);
    const BusWatch bus;
    if (!bus.problem().isEmpty())
        return complain(QStringLiteral("there is no session bus (dbus-run-session starts one): ") +
                            bus.problem(),
                        Failed);
    QObject::connect(&bus, &BusWatch::lost, application, [] {
        complain(QStringLiteral("the session bus has gone"), Failed);
        QCoreApplication::exit(Failed);
    });
    status = instruments.start();
    return status == Done ? application->exec() : status;
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("graph-simulator"));
    QCoreApplication::setApplicationVersion(QStringLiteral(SIMULATOR_VERSION));

    QString error;
    const std::optional<CommandLine> line = CommandLine::parsed(QCoreApplication::arguments(), &error);
    if (!line)
        return complain(error + QStringLiteral(" (--help lists the options)"), NotUnderstood);
    if (!line->checkedFiles.isEmpty())
        return checkFiles(line->checkedFiles);
    return run(&application, *line);
}
