#pragma once

#include "plots/GraphPoint.h"

class GraphPointDot : public GraphPoint
{
    Q_OBJECT

public:
    using GraphPoint::GraphPoint;

    void paint(QPainter *painter, int x, int y) override;
};

class GraphPointCircle : public GraphPoint
{
    Q_OBJECT

public:
    using GraphPoint::GraphPoint;

    void paint(QPainter *painter, int x, int y) override;
};

class GraphPointCross : public GraphPoint
{
    Q_OBJECT

public:
    using GraphPoint::GraphPoint;

    void paint(QPainter *painter, int x, int y) override;
};

class GraphPointHorizontalLine : public GraphPoint
{
    Q_OBJECT

public:
    using GraphPoint::GraphPoint;

    void paint(QPainter *painter, int x, int y) override;
};

class GraphPointVerticalLine : public GraphPoint
{
    Q_OBJECT

public:
    using GraphPoint::GraphPoint;

    void paint(QPainter *painter, int x, int y) override;
};
