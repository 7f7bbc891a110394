#include "axis/LabelLayout.h"

#include "common/SafeInteger.h"

#include <algorithm>
#include <cmath>

namespace graph {

namespace {

// Above this a double cannot count by ones.
constexpr double greatestOrdinal = 9e15;

void sortAlongRows(QVector<LabelSpan> &labels)
{
    std::stable_sort(labels.begin(), labels.end(), [](const LabelSpan &a, const LabelSpan &b) {
        return a.row != b.row ? a.row < b.row : a.center < b.center;
    });
}

QVector<double> countedOrdinals(int size)
{
    QVector<double> ordinals;
    ordinals.reserve(size);
    for (int i = 0; i < size; ++i)
        ordinals.append(i);
    return ordinals;
}

// Places the labels begin..end of one row.
class RowPlacement
{
public:
    RowPlacement(const QVector<LabelSpan> &labels, const LabelRoom &room)
        : m_labels(labels)
        , m_room(room)
    {
    }

    void place(int begin, int end, QVector<PlacedLabel> &placed)
    {
        m_kept.clear();
        for (const int rank : {0, 1, 2}) {
            for (int i = begin; i < end; ++i) {
                if (rankOf(m_labels.at(i)) == rank)
                    keepIfFree(i);
            }
        }
        std::sort(m_kept.begin(), m_kept.end(),
                  [](const Kept &a, const Kept &b) { return a.begin < b.begin; });
        for (const Kept &kept : std::as_const(m_kept))
            placed.append({m_labels.at(kept.label).index, kept.begin, m_labels.at(kept.label).row});
    }

private:
    struct Kept
    {
        int label;
        int begin;
        int end;
    };

    int begin(const LabelSpan &span) const
    {
        return std::max(std::min(centered(span), m_room.end - span.extent), m_room.begin);
    }

    static int centered(const LabelSpan &span) { return pixel(span.center) - span.extent / 2; }

    int rankOf(const LabelSpan &span) const
    {
        if (span.isExtreme)
            return 0;
        return begin(span) == centered(span) ? 1 : 2;
    }

    void keepIfFree(int label)
    {
        const LabelSpan &span = m_labels.at(label);
        if (span.extent > m_room.end - m_room.begin)
            return;
        const Kept wanted{label, begin(span), begin(span) + span.extent};
        const auto touches = [&](int otherBegin, int otherEnd) {
            return wanted.begin < otherEnd + m_room.gap && otherBegin < wanted.end + m_room.gap;
        };
        if (span.row == m_room.takenRow && touches(m_room.takenBegin, m_room.takenEnd))
            return;
        for (const Kept &kept : std::as_const(m_kept)) {
            if (touches(kept.begin, kept.end))
                return;
        }
        m_kept.append(wanted);
    }

    const QVector<LabelSpan> &m_labels;
    const LabelRoom &m_room;
    QVector<Kept> m_kept;
};

} // namespace

double labelStride(double distance, double extent)
{
    if (!(distance > 0.0) || !std::isfinite(distance) || !std::isfinite(extent))
        return 0.0;
    for (double power = 1.0; power < greatestOrdinal; power *= 10.0) {
        for (const double stride : {power, 2.0 * power, 5.0 * power}) {
            if (stride * distance >= extent)
                return stride;
        }
    }
    return 0.0;
}

QVector<double> tickOrdinals(const QList<qreal> &ticks, double interval)
{
    QVector<double> ordinals;
    ordinals.reserve(ticks.size());
    for (const double tick : ticks) {
        const double place = tick / interval;
        const double ordinal = std::round(place);
        if (!(std::abs(ordinal) < greatestOrdinal) || std::abs(place - ordinal) > 0.01)
            return {};
        ordinals.append(ordinal);
    }
    return ordinals;
}

QVector<double> tickOrdinals(const QList<qreal> &ticks, const QList<qreal> &positions)
{
    QVector<double> ordinals;
    ordinals.reserve(ticks.size());
    int place = 0;
    for (const double tick : ticks) {
        while (place < positions.size() && positions.at(place) != tick)
            ++place;
        if (place == positions.size())
            return countedOrdinals(ticks.size());
        ordinals.append(place++);
    }
    return ordinals;
}

bool keepsGap(QVector<LabelSpan> labels, int gap)
{
    sortAlongRows(labels);
    for (int i = 1; i < labels.size(); ++i) {
        const LabelSpan &a = labels.at(i - 1);
        const LabelSpan &b = labels.at(i);
        const double distance = b.center - a.center;
        if (a.row == b.row && distance >= 1.0 && distance < (a.extent + b.extent) / 2.0 + gap)
            return false;
    }
    return true;
}

QVector<PlacedLabel> placedLabels(QVector<LabelSpan> labels, const LabelRoom &room)
{
    sortAlongRows(labels);
    QVector<PlacedLabel> placed;
    RowPlacement placement(labels, room);
    int begin = 0;
    for (int i = 1; i <= labels.size(); ++i) {
        if (i == labels.size() || labels.at(i).row != labels.at(begin).row) {
            placement.place(begin, i, placed);
            begin = i;
        }
    }
    return placed;
}

} // namespace graph
