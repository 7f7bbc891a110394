#include "plugin/Test.h"

#include <QPainter>

/*!
    \qmltype Test
    \inqmlmodule graph_plugin
    \brief A line from (0, 0) to (200, 200) pixels, which shows that the module is loaded.
*/
Test::Test(QQuickItem *parent)
    : QQuickPaintedItem(parent)
{
}

void Test::paint(QPainter *painter)
{
    painter->setPen(QPen(QColor(100, 0, 0), 3));
    painter->drawLine(0, 0, 200, 200);
}
