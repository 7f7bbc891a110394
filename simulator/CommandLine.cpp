#include "CommandLine.h"

#include <QCommandLineParser>
#include <QFileInfo>

namespace {

// 80 MB for one trace.
constexpr int mostSamples = 10000000;
constexpr double highestRate = 1000.0;

QStringList knownInstruments()
{
    return {"analyzer", "otdr", "scope", "logger", "audio", "spectrogram"};
}

QList<QCommandLineOption> options()
{
    return {
        {"instrument",
         "Start the instrument <name>: analyzer, otdr, scope, logger, audio or spectrogram. May be given "
         "several "
         "times; all of them by default.",
         "name"},
        {"samples",
         "Samples of each sweep (0 to 10000000; by default 1001 of the analyzer, 20001 of the otdr, 10000 of "
         "the scope, 8 of the logger, 1999 of audio, 501 of the spectrogram).",
         "number"},
        {"rate",
         "Sweeps per second (above 0, up to 1000; by default 25, of the otdr 4, of a recording its own).",
         "hertz"},
        {"seed", "What the noise and the phases are derived from (default 1).", "number", "1"},
        {"hold", "Publish the sweep of this number only, and stay on the bus with it.", "number"},
        {"replay",
         "Publish the recording in <file>. Once each for a trace, a table of events and a table of regions; "
         "instruments only start if they are named too.",
         "file"},
        {"check", "Read the recording in <file>, print what it holds, and end.", "file"},
        {"heatmap", "Write heat map files of the analyzer's sweeps, or of replayed ones, into <directory>.",
         "directory"},
        {"heatmap-sweeps", "Sweeps in each heat map file (default 25).", "number", "25"}};
}

bool fail(const char *option, const QString &value, const QString &expected, QString *error)
{
    *error = QStringLiteral("--%1: \"%2\" is not %3").arg(QString::fromLatin1(option), value, expected);
    return false;
}

bool readInstruments(const QCommandLineParser &parser, CommandLine *line, QString *error)
{
    for (const QString &name : parser.values("instrument")) {
        if (!knownInstruments().contains(name))
            return fail("instrument", name, QStringLiteral("one of ") + knownInstruments().join(", "), error);
    }
    line->instruments = parser.values("instrument");
    line->instruments.removeDuplicates();
    line->replayFiles = parser.values("replay");
    line->checkedFiles = parser.values("check");
    if (line->instruments.isEmpty() && line->replayFiles.isEmpty())
        line->instruments = knownInstruments();
    return true;
}

bool readNumbers(const QCommandLineParser &parser, CommandLine *line, QString *error)
{
    bool isNumber = true;
    if (parser.isSet("samples")) {
        const QString text = parser.value("samples");
        line->samples = text.toInt(&isNumber);
        if (!isNumber || *line->samples < 0 || *line->samples > mostSamples)
            return fail("samples", text, QStringLiteral("a number from 0 to %1").arg(mostSamples), error);
    }
    if (parser.isSet("rate")) {
        const QString text = parser.value("rate");
        line->rate = text.toDouble(&isNumber);
        if (!isNumber || !(*line->rate > 0.0) || !(*line->rate <= highestRate))
            return fail("rate", text, QStringLiteral("a number above 0 and up to %1").arg(highestRate),
                        error);
    }
    line->seed = parser.value("seed").toULongLong(&isNumber);
    if (!isNumber)
        return fail("seed", parser.value("seed"), QStringLiteral("a whole number from 0"), error);
    if (parser.isSet("hold")) {
        // Clients take the number as a double, which holds no more digits.
        line->held = parser.value("hold").toULongLong(&isNumber);
        if (!isNumber || *line->held > quint64(0x1p53))
            return fail("hold", parser.value("hold"), QStringLiteral("a whole number from 0 to 2^53"), error);
    }
    return true;
}

bool readHeatmap(const QCommandLineParser &parser, CommandLine *line, QString *error)
{
    bool isNumber = false;
    const QString sweeps = parser.value("heatmap-sweeps");
    line->heatmapSweeps = sweeps.toInt(&isNumber);
    if (!isNumber || line->heatmapSweeps < 1 || line->heatmapSweeps > 1000000)
        return fail("heatmap-sweeps", sweeps, QStringLiteral("a number from 1 to 1000000"), error);
    if (!parser.isSet("heatmap"))
        return true;
    line->heatmapDirectory = parser.value("heatmap");
    const QFileInfo directory(line->heatmapDirectory);
    if (!directory.isDir() || !directory.isWritable())
        return fail("heatmap", line->heatmapDirectory, QStringLiteral("a directory to write into"), error);
    if (line->instruments.contains("analyzer") || !line->replayFiles.isEmpty())
        return true;
    *error = QStringLiteral("--heatmap: the analyzer is not among the instruments, and there is no replay");
    return false;
}

} // namespace

std::optional<CommandLine> CommandLine::parsed(const QStringList &arguments, QString *error)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        "Publishes the traces of simulated or recorded instruments on the session bus.");
    const QCommandLineOption help = parser.addHelpOption();
    const QCommandLineOption version = parser.addVersionOption();
    parser.addOptions(options());
    if (!parser.parse(arguments)) {
        *error = parser.errorText();
        return {};
    }
    if (parser.isSet(help))
        parser.showHelp(0);
    if (parser.isSet(version))
        parser.showVersion();
    if (!parser.positionalArguments().isEmpty()) {
        *error = QStringLiteral("\"%1\" is not an option").arg(parser.positionalArguments().first());
        return {};
    }
    CommandLine line;
    if (!readInstruments(parser, &line, error) || !readNumbers(parser, &line, error) ||
        !readHeatmap(parser, &line, error))
        return {};
    return line;
}
