#pragma once

#include <QQuickPaintedItem>

// Paints one line, to see at a glance that the module is loaded and that painted items reach the screen.
class Test : public QQuickPaintedItem
{
    Q_OBJECT

public:
    explicit Test(QQuickItem *parent = nullptr);

    void paint(QPainter *painter) override;
};
