#pragma once

#include <QColor>
#include <QFont>
#include <QVector>

#include <functional>

namespace graph {

// What a chart gives a cursor and its markers where the document says nothing.
struct CursorLook
{
    QColor color;
    QFont font;
    QVector<QColor> markerColors;
    // A distance along the axis, with its unit.
    std::function<QString(double)> distanceText;
};

} // namespace graph
