#pragma once

#include <QList>
#include <QVector>

namespace graph {

// One label along its axis, in pixels from the beginning of the axis: its tick, its length there, its row, and
// whether it names an end of the axis' full range.
struct LabelSpan
{
    int index = 0;
    double center = 0.0;
    int extent = 0;
    int row = 0;
    bool isExtreme = false;
};

// Where labels may be: within begin..end, at least `gap` apart, and not where something else already is in
// one of the rows.
struct LabelRoom
{
    int begin = 0;
    int end = 0;
    int gap = 0;
    int takenRow = -1;
    int takenBegin = 0;
    int takenEnd = 0;
};

struct PlacedLabel
{
    int index = 0;
    int start = 0;
    int row = 0;
};

// The least of 1, 2, 5, 10, 20, 50 ... that, times the distance of ticks, leaves room for extent; 0 when
// there is none, as for a distance that is 0 or not finite.
double labelStride(double distance, double extent);

// The places of ticks on the grid of interval, counted from 0; empty when they are not on it.
QVector<double> tickOrdinals(const QList<qreal> &ticks, double interval);

// The places of ticks in positions, of which they are a part in the same order; else the places in their own
// list.
QVector<double> tickOrdinals(const QList<qreal> &ticks, const QList<qreal> &positions);

// Whether labels that follow each other in a row are at least `gap` apart. Labels on one and the same pixel count as
// one.
bool keepsGap(QVector<LabelSpan> labels, int gap);

// The labels that fit whole and apart, by their places. Those beyond the room are moved inside. Taken places
// come first, then the extremes, then labels that need not be moved: a label that is about to leave the axis
// gives way to the one behind it, so that none blinks while the axis is panned.
QVector<PlacedLabel> placedLabels(QVector<LabelSpan> labels, const LabelRoom &room);

} // namespace graph
