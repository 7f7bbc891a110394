#pragma once

#include <QFont>
#include <QHash>
#include <QString>

namespace graph {

// How wide texts of a font are: to shape one costs more than all else that is done with it, and the numbers of an axis
// are mostly those of the frame before.
class TextWidths
{
public:
    double of(const QString &text, const QFont &font);

private:
    QFont m_font;
    QHash<QString, double> m_widths;
};

} // namespace graph
