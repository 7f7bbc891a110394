#pragma once

#include <QVector>

namespace graph {

// A label that wants to stand centred at a position along its axis. All lengths are pixels.
struct LabelCandidate
{
    int index;      // of the caller
    qint64 number;  // counts the ticks from a fixed origin, so that a choice among them does not depend on the view
    double position;
    double extent;  // along the axis
};

struct LabelSpan
{
    double start;
    double end;
    int row = -1; // -1: all rows
};

// Where labels may stand.
struct LabelTrack
{
    double lowest;
    double highest;
    double gap;                  // least distance between neighbours in a row
    int rows = 1;                // 2: labels alternate by their number
    QVector<LabelSpan> reserved; // nothing may touch these
};

struct LabelPlace
{
    int index;
    double start;
    int row;
};

// Chooses which labels are drawn and where. All of them if neighbours keep the gap, else every second, fifth, tenth, ...
// by number. Labels that stick out of the track are shifted into it, and displace the neighbours they then touch;
// labels wider than the track, and those that touch reserved room, are left out. Candidates in any order.
QVector<LabelPlace> labelPlaces(const QVector<LabelCandidate> &candidates, const LabelTrack &track);

} // namespace graph
