#pragma once

#include <QString>
#include <QStringList>

#include <optional>

// What the user asked for on the command line.
struct CommandLine
{
    QStringList instruments; // names of services
    std::optional<int> samples;
    std::optional<double> rate;
    quint64 seed = 1;
    std::optional<quint64> held;
    QStringList replayFiles;
    QStringList checkedFiles;
    QString heatmapDirectory;
    int heatmapSweeps = 25;

    // Prints the help or the version and ends the program when they are asked for. Nothing, and the reason,
    // for what cannot be obeyed.
    static std::optional<CommandLine> parsed(const QStringList &arguments, QString *error);
};
