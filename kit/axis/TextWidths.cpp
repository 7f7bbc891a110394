#include "kit/axis/TextWidths.h"

#include <QFontMetricsF>

namespace graph {

double TextWidths::of(const QString &text, const QFont &font)
{
    constexpr int most = 256;
    if (m_font != font || m_widths.size() >= most) {
        m_font = font;
        m_widths.clear();
    }
    auto known = m_widths.find(text);
    if (known == m_widths.end())
        known = m_widths.insert(text, QFontMetricsF(font).horizontalAdvance(text));
    return *known;
}

} // namespace graph
