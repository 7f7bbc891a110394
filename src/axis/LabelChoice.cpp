#include "axis/LabelChoice.h"

#include "common/SafeInteger.h"

#include <algorithm>
#include <cmath>

namespace graph {

namespace {

// Rows belong to the values, so that labels do not change theirs while panning.
int rowOf(double ordinal, double stride, int rows)
{
    return rows == 2 && std::fmod(ordinal / stride, 2.0) != 0.0 ? 1 : 0;
}

} // namespace

LabelChoice::LabelChoice(const TickMarks &marks, LabelTexts &texts, const LabelTexts::Format &format,
                         const QFontMetrics &metrics, bool centered)
    : m_marks(marks)
    , m_set(marks.set())
    , m_texts(texts)
    , m_format(format)
    , m_metrics(metrics)
    , m_centered(centered)
    , m_isGrid(m_set.positions.isEmpty())
    , m_ordinals(m_isGrid ? tickOrdinals(m_set.ticks, m_set.interval)
                          : tickOrdinals(m_set.ticks, m_set.positions))
{
}

QVector<LabelSpan> LabelChoice::spans(const QVector<TickMarks::Mark> &marks, int rows, int gap)
{
    const double stride = m_isGrid ? gridStride(marks, rows, gap) : listStride(rows, gap);
    const QVector<LabelSpan> chosen = stride > 0.0 ? spansAt(stride, marks, rows) : QVector<LabelSpan>();
    m_distance =
        m_isGrid ? stride * rows * std::abs(m_marks.place(m_set.interval) - m_marks.place(0.0)) : 0.0;
    m_widest = 0;
    for (const LabelSpan &label : chosen)
        m_widest = std::max(m_widest, text(m_set.ticks.at(label.index)).width);
    for (const double end : {m_marks.firstOnGrid(), m_marks.lastOnGrid()}) {
        if (m_isGrid && std::isfinite(end))
            m_widest = std::max(m_widest, text(end).width);
    }
    return chosen;
}

// The labels of every stride-th tick.
QVector<LabelSpan> LabelChoice::spansAt(double stride, const QVector<TickMarks::Mark> &marks, int rows)
{
    QVector<LabelSpan> labels;
    for (const TickMarks::Mark &mark : marks) {
        const double ordinal = m_ordinals.at(mark.index);
        const double tick = m_set.ticks.at(mark.index);
        if (!(std::fmod(ordinal, stride) == 0.0) || text(tick).text.isEmpty())
            continue;
        const int size = extent(tick);
        const int half = size / 2; // as the label is drawn
        const double center = m_centered ? mark.place : mark.place - half;
        labels.append({mark.index, center, size, rowOf(ordinal, stride, rows), m_marks.isExtreme(tick)});
    }
    return labels;
}

// The stride for evenly spaced ticks. It depends on nothing that changes while the axis is panned, apart from
// the widths of the labels themselves.
double LabelChoice::gridStride(const QVector<TickMarks::Mark> &marks, int rows, int gap)
{
    const double distance = rows * std::abs(m_marks.place(m_set.interval) - m_marks.place(0.0));
    const int rounding = 2;
    int widest = m_marks.isHorizontal() ? gap : m_metrics.height();
    for (const double end : {m_marks.firstOnGrid(), m_marks.lastOnGrid()}) {
        if (m_marks.isHorizontal() && std::isfinite(end))
            widest = std::max(widest, text(end).width);
    }
    for (;;) {
        const double stride = labelStride(distance, widest + gap + rounding);
        int found = widest;
        for (const LabelSpan &label : stride > 0.0 ? spansAt(stride, marks, rows) : QVector<LabelSpan>())
            found = std::max(found, label.extent);
        if (found == widest)
            return stride;
        widest = found;
    }
}

// The stride for ticks from a list. All of them count, not only the visible ones, so that it stays while
// panning.
double LabelChoice::listStride(int rows, int gap)
{
    const QList<qreal> &positions = m_set.positions;
    double stride = 1.0;
    for (; stride < positions.size(); stride = labelStride(1.0, stride + 1.0)) {
        QVector<LabelSpan> labels;
        for (int i = 0; i < positions.size(); i += truncatedIndex(stride)) {
            const double position = positions.at(i);
            if (std::isfinite(position) && !text(position).text.isEmpty())
                labels.append({i, m_marks.place(position), extent(position), rowOf(i, stride, rows)});
        }
        if (keepsGap(labels, gap))
            break;
    }
    return stride;
}

int LabelChoice::extent(double tick)
{
    return m_marks.isHorizontal() ? text(tick).width : m_metrics.height();
}

} // namespace graph
