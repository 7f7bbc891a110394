#include "kit/chart/Backdrop.h"

#include <QPainter>
#include <QQuickWindow>
#include <QSGRectangleNode>

namespace graph {

namespace {

void show(QSGNode *node, const QRectF &rect, const QColor &color)
{
    auto *rectangle = static_cast<QSGRectangleNode *>(node);
    rectangle->setRect(rect);
    rectangle->setColor(color);
}

} // namespace

void Backdrop::paint(QPainter *painter) const
{
    painter->fillRect(chart, color);
    painter->fillRect(plotArea, plotColor);
}

QSGNode *Backdrop::node(QSGNode *former, QQuickWindow *window) const
{
    QSGNode *node = former;
    if (!node) {
        node = new QSGNode;
        node->appendChildNode(window->createRectangleNode());
        node->appendChildNode(window->createRectangleNode());
    }
    show(node->firstChild(), chart, color);
    show(node->lastChild(), plotArea, plotColor);
    return node;
}

} // namespace graph
