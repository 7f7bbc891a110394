#pragma once

#include <QMap>
#include <QString>
#include <QStringList>
#include <QVector>

namespace simulation {

enum class RecordingKind { Points, Series, Sweeps, Regions, Events };

struct RecordingHeader
{
    RecordingKind kind = RecordingKind::Points;
    QString kindName;
    QString title;
    QString xLabel;
    QString xUnits;
    QString yLabel;
    QString yUnits;
    bool equallySpaced = false;
    double xFirst = 0.0;
    double xStep = 0.0;
    int points = 0; // rows, or samples of each sweep
    int sweeps = 1;
};

// A recorded measurement. The numbers are kept under the names of their columns; the sweeps of a recording follow
// each other in "y", and their times are "t".
struct Recording
{
    RecordingHeader header;
    QMap<QString, QVector<double>> numbers;
    QMap<QString, QStringList> texts;
};

struct ReadingError
{
    int line = 0; // counted from 1; 0 when the whole file is meant
    QString message;
};

} // namespace simulation
