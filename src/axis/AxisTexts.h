#pragma once

#include <QHash>
#include <QList>
#include <QString>

namespace graph {

// The texts of one list of ticks and their widths, made when they are first needed.
struct AxisTexts
{
    struct Text
    {
        QString text;
        int width = 0;
    };

    QList<qreal> ticks;
    QHash<double, Text> texts;
};

} // namespace graph
