#pragma once

#include <QString>
#include <QStringList>
#include <QVariantMap>

namespace gallery {

// The recordings to show, and what pages need to know of them.
struct Replay
{
    QStringList files;
    // Samples of the trace that are shown at a time, and rows of the tables.
    int samples = 0;
    int events = 0;
    int regions = 0;
    // Sweeps over a frequency: a heat map can be made of them.
    bool hasSpectra = false;
    // These numbers, names and units for the axes, and ranges that hold all of the recordings.
    QVariantMap description;

    // Reads these files. False, and the reason, when one cannot be read or two are of the same kind.
    bool read(const QStringList &paths, QString *error);
};

} // namespace gallery
