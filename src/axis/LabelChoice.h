#pragma once

#include "axis/LabelLayout.h"
#include "axis/LabelTexts.h"
#include "axis/TickMarks.h"

namespace graph {

// Chooses which ticks of an axis have a label: as many of them, at even steps, as have room for it.
class LabelChoice
{
public:
    // centered: whether labels have their line at their middle, or, on a vertical axis, below them.
    LabelChoice(const TickMarks &marks, LabelTexts &texts, const LabelTexts::Format &format,
                const QFontMetrics &metrics, bool centered);

    const LabelTexts::Text &text(double tick) { return m_texts.text(tick, m_format, m_metrics); }
    // The chosen labels of these marks in so many rows, `gap` apart. The choice does not change while panning.
    QVector<LabelSpan> spans(const QVector<TickMarks::Mark> &marks, int rows, int gap);

    // Of those, and of the ends of the axis: the widest, in pixels, and the distance of neighbours in a row,
    // which is 0 for ticks from a list.
    int widest() const { return m_widest; }
    double distance() const { return m_distance; }

private:
    QVector<LabelSpan> spansAt(double stride, const QVector<TickMarks::Mark> &marks, int rows);
    double gridStride(const QVector<TickMarks::Mark> &marks, int rows, int gap);
    double listStride(int rows, int gap);
    int extent(double tick);

    const TickMarks &m_marks;
    const TickSet &m_set;
    LabelTexts &m_texts;
    const LabelTexts::Format &m_format;
    const QFontMetrics &m_metrics;
    bool m_centered;
    bool m_isGrid;
    QVector<double> m_ordinals;
    int m_widest = 0;
    double m_distance = 0.0;
};

} // namespace graph
