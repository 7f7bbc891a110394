#include "axis/LabelTexts.h"

#include <algorithm>

namespace graph {

void LabelTexts::setTicks(const QList<qreal> &ticks)
{
    if (m_ticks == ticks)
        return;
    m_ticks = ticks;
    m_texts.clear();
}

bool LabelTexts::areStill(const Format &format)
{
    const bool same =
        std::all_of(m_texts.keyValueBegin(), m_texts.keyValueEnd(),
                    [&format](const auto &known) { return format(known.first) == known.second.text; });
    if (!same)
        m_texts.clear();
    return same;
}

void LabelTexts::clear()
{
    m_ticks.clear();
    m_texts.clear();
}

const LabelTexts::Text &LabelTexts::text(double tick, const Format &format, const QFontMetrics &metrics)
{
    const auto known = m_texts.constFind(tick);
    if (known != m_texts.constEnd())
        return *known;
    const QString text = format(tick);
    return *m_texts.insert(tick, {text, metrics.horizontalAdvance(text)});
}

} // namespace graph
