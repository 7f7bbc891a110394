#pragma once

#include <QFontMetrics>
#include <QHash>
#include <QList>
#include <QString>

#include <functional>

namespace graph {

// The texts of the labels of one list of ticks with their widths, kept from one repaint to the next:
// measuring a text costs more than making it.
class LabelTexts
{
public:
    struct Text
    {
        QString text;
        int width = 0;
    };
    using Format = std::function<QString(double)>;

    // Forgets the texts of any other ticks.
    void setTicks(const QList<qreal> &ticks);
    // Forgets all texts when the format gives another one for any of them; false then.
    bool areStill(const Format &format);
    void clear();

    const Text &text(double tick, const Format &format, const QFontMetrics &metrics);
    int size() const { return m_texts.size(); }

private:
    QList<qreal> m_ticks;
    QHash<double, Text> m_texts;
};

} // namespace graph
