#include "axis/LabelTexts.h"

#include <algorithm>
#include <utility>

namespace graph {

void LabelTexts::beginLayout(double interval)
{
    if (m_interval != interval)
        m_texts.clear();
    m_interval = interval;
    for (auto text = m_texts.begin(); text != m_texts.end();) {
        if (std::exchange(text->isUsed, false))
            ++text;
        else
            text = m_texts.erase(text);
    }
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

void LabelTexts::forgetTexts()
{
    m_texts.clear();
}

void LabelTexts::clear()
{
    forgetTexts();
    m_widths.clear();
}

const LabelTexts::Text &LabelTexts::text(double tick, const Format &format, const QFontMetrics &metrics)
{
    const auto known = m_texts.find(tick);
    if (known != m_texts.end()) {
        known->isUsed = true;
        return *known;
    }
    const QString text = format(tick);
    return *m_texts.insert(tick, {text, width(text, metrics), true});
}

int LabelTexts::width(const QString &text, const QFontMetrics &metrics)
{
    constexpr int most = 200;
    const auto known = m_widths.constFind(text);
    if (known != m_widths.constEnd())
        return *known;
    if (m_widths.size() >= most)
        m_widths.clear();
    return *m_widths.insert(text, metrics.horizontalAdvance(text));
}

} // namespace graph
