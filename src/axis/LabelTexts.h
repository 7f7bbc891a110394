#pragma once

#include <QFontMetrics>
#include <QHash>
#include <QList>
#include <QString>

#include <functional>

namespace graph {

// The texts of the labels of an axis with their widths, kept from one repaint to the next:
// measuring a text costs more than making it.
class LabelTexts
{
public:
    struct Text
    {
        QString text;
        int width = 0;
        bool isUsed = false; // in this layout
    };
    using Format = std::function<QString(double)>;

    // Forgets the texts that were not asked for since the last time: a range that moves keeps most of its ticks. All of
    // them at another interval of the ticks, by which a format may round.
    void beginLayout(double interval);
    // Forgets all texts when the format gives another one for any of them; false then.
    bool areStill(const Format &format);
    // Ticks may have other texts. Most of those that an axis shows then were there before, and have their widths.
    void forgetTexts();
    // The font may be another one, too.
    void clear();

    const Text &text(double tick, const Format &format, const QFontMetrics &metrics);
    // Of any text in the font of the labels, like a unit.
    int width(const QString &text, const QFontMetrics &metrics);
    int size() const { return m_texts.size(); }

private:
    double m_interval = 0.0;
    QHash<double, Text> m_texts;
    QHash<QString, int> m_widths;
};

} // namespace graph
