#pragma once

#include <QObject>
#include <QPointer>
#include <QVariant>

namespace graph {

class ChartTheme;

// The theme of a chart: one of the two that it has by itself, or one of a document.
class ThemeChoice : public QObject
{
    Q_OBJECT

public:
    enum Kind : int { Dark, Light };

    // The owner of the two.
    explicit ThemeChoice(QObject *chart);

    // As a document has written it.
    QVariant written() const { return m_written; }
    const ChartTheme &theme() const;
    ChartTheme *object() const;

    // A number of a kind, or a ChartTheme. Anything else is the dark one.
    void write(const QVariant &theme);

signals:
    void writtenChanged();
    // Another theme, or another look of the same.
    void changed();

private:
    ChartTheme *m_dark;
    ChartTheme *m_light;
    QVariant m_written{int(Dark)};
    QPointer<ChartTheme> m_theme;
};

} // namespace graph
