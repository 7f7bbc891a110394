#include "kit/chart/ThemeChoice.h"

#include "kit/chart/ChartTheme.h"

namespace graph {

ThemeChoice::ThemeChoice(QObject *chart)
    : m_dark(ChartTheme::dark(chart))
    , m_light(ChartTheme::light(chart))
{
    write(int(Dark));
}

const ChartTheme &ThemeChoice::theme() const
{
    return m_theme ? *m_theme : *m_dark;
}

ChartTheme *ThemeChoice::object() const
{
    return m_theme;
}

void ThemeChoice::write(const QVariant &theme)
{
    auto *own = qobject_cast<ChartTheme *>(theme.value<QObject *>());
    ChartTheme *chosen = own ? own : theme.toInt() == Light ? m_light : m_dark;
    if (m_written != theme) {
        m_written = theme;
        emit writtenChanged();
    }
    if (m_theme == chosen)
        return;
    if (m_theme)
        disconnect(m_theme, nullptr, this, nullptr);
    m_theme = chosen;
    connect(chosen, &ChartTheme::changed, this, &ThemeChoice::changed);
    connect(chosen, &QObject::destroyed, this, [this, chosen] {
        if (chosen != m_dark && chosen != m_light)
            write(int(Dark));
    });
    emit changed();
}

} // namespace graph
