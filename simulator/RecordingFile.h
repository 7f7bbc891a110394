#pragma once

#include "simulator/Recording.h"

#include <optional>

namespace simulation {

// Reads a recording from a file. Nothing, and "file:line: reason", when that cannot be done.
std::optional<Recording> recordingInFile(const QString &path, QString *error);

// Reads several files. Nothing, and the reason, if one of them cannot be read.
std::optional<QVector<Recording>> recordingsInFiles(const QStringList &paths, QString *error);

// One unit of frequency in hertz; 0 for a unit of anything else.
double hertz(const QString &unit);

struct Extent
{
    double lowest = 0.0;
    double highest = 0.0;
    int missing = 0; // samples that are NaN
};

// Of the samples that are numbers; 0 to 0 when there are none.
Extent extentOf(const QVector<double> &samples);
// The places of the recording along its x axis.
Extent xExtentOf(const Recording &recording);
// The column that holds the recording's values.
const QVector<double> &valuesOf(const Recording &recording);

// A summary of the recording on one line.
QString summaryOf(const Recording &recording);

} // namespace simulation
