#pragma once

#include <QColor>
#include <QRectF>

class QPainter;
class QQuickWindow;
class QSGNode;

namespace graph {

// What a chart has behind all of its items: a colour, and another one in its plot area. In the coordinates of the chart.
struct Backdrop
{
    QRectF chart;
    QColor color;
    QRectF plotArea;
    QColor plotColor;

    void paint(QPainter *painter) const;
    // The same for the screen; former: what this has given before, null at first.
    QSGNode *node(QSGNode *former, QQuickWindow *window) const;
};

// A view with a backdrop.
class BackdropSource
{
public:
    virtual Backdrop backdrop() const = 0;

protected:
    ~BackdropSource() = default;
};

} // namespace graph
