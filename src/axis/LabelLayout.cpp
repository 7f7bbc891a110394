#include "axis/LabelLayout.h"

#include <algorithm>

namespace graph {

namespace {

// A label on the track, with the room it takes.
struct Slot
{
    LabelPlace place;
    double end;
    bool isShifted;
};

// Row by row, in ascending order along the axis.
using Rows = QVector<QVector<Slot>>;

Rows rowsOf(const QVector<LabelCandidate> &sorted, const LabelTrack &track, qint64 stride)
{
    Rows rows(std::max(1, track.rows));
    for (const LabelCandidate &label : sorted) {
        if (label.number % stride != 0 || label.extent > track.highest - track.lowest)
            continue;
        const int row = rows.size() > 1 && label.number / stride % 2 != 0 ? 1 : 0;
        const double wanted = label.position - label.extent / 2;
        const double start = std::clamp(wanted, track.lowest, track.highest - label.extent);
        rows[row].append({{label.index, start, row}, start + label.extent, start != wanted});
    }
    return rows;
}

bool areTooClose(const Slot &left, const Slot &right, double gap)
{
    return right.place.start - left.end < gap;
}

// Labels that stand where they belong have to keep the gap; those shifted in from the ends are settled afterwards.
bool keepsGap(const Rows &rows, double gap)
{
    return std::all_of(rows.begin(), rows.end(), [gap](const QVector<Slot> &row) {
        return std::adjacent_find(row.begin(), row.end(), [gap](const Slot &left, const Slot &right) {
                   return !left.isShifted && !right.isShifted && areTooClose(left, right, gap);
               }) == row.end();
    });
}

void displaceByEnds(QVector<Slot> &row, double gap)
{
    while (row.size() > 1 && row.first().isShifted && areTooClose(row[0], row[1], gap))
        row.removeAt(1);
    while (row.size() > 1 && row.last().isShifted && areTooClose(row[row.size() - 2], row.last(), gap))
        row.removeAt(row.size() - 2);
}

bool touches(const Slot &slot, const LabelSpan &span, double gap)
{
    return (span.row == -1 || span.row == slot.place.row) && slot.end + gap > span.start
           && slot.place.start < span.end + gap;
}

} // namespace

QVector<LabelPlace> labelPlaces(const QVector<LabelCandidate> &candidates, const LabelTrack &track)
{
    QVector<LabelCandidate> sorted = candidates;
    std::stable_sort(sorted.begin(), sorted.end(), [](const LabelCandidate &a, const LabelCandidate &b) {
        return a.position < b.position;
    });

    // 1, 2, 5, 10, 20, 50, ...
    Rows rows = rowsOf(sorted, track, 1);
    const qint64 factors[] = {2, 5, 10};
    for (qint64 decade = 1; !keepsGap(rows, track.gap) && decade < 1000000; decade *= 10) {
        for (const qint64 factor : factors) {
            rows = rowsOf(sorted, track, factor * decade);
            if (keepsGap(rows, track.gap))
                break;
        }
    }

    QVector<LabelPlace> places;
    for (QVector<Slot> &row : rows) {
        displaceByEnds(row, track.gap);
        for (const Slot &slot : qAsConst(row)) {
            const bool isFree = std::none_of(track.reserved.begin(), track.reserved.end(), [&](const LabelSpan &span) {
                return touches(slot, span, track.gap);
            });
            if (isFree)
                places.append(slot.place);
        }
    }
    return places;
}

} // namespace graph
