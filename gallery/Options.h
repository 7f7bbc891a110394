#pragma once

#include "Replay.h"

#include <QSize>
#include <QString>
#include <QStringList>

namespace gallery {

// What the command line asks for.
struct Options
{
    QString page;
    QString pictureFile;
    QString pictureFolder;
    Replay replay;
    // Of the window, in logical pixels; a scaled screen has more physical ones.
    QSize size = QSize(1024, 600);
    int seed = 1;
    bool list = false;
    bool light = false;

    bool takesPictures() const { return !pictureFile.isEmpty() || !pictureFolder.isEmpty(); }
};

// A text to print instead of running, and the exit status.
struct CommandLineAnswer
{
    QString text;
    int status = 0;
};

// Fills `options` from the arguments (program name first). An answer with a text means: show it and leave.
CommandLineAnswer parsedCommandLine(const QStringList &arguments, Options *options);

} // namespace gallery
