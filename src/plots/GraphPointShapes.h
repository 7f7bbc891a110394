#pragma once

#include "common/Export.h"
#include "plots/GraphPoint.h"

class GRAPH_CHARTS_EXPORT GraphPointDot : public GraphPoint
{
    Q_OBJECT

public:
    using GraphPoint::GraphPoint;

    void paint(QPainter *painter, int x, int y) override;
};

class GRAPH_CHARTS_EXPORT GraphPointCircle : public GraphPoint
{
    Q_OBJECT

public:
    using GraphPoint::GraphPoint;

    void paint(QPainter *painter, int x, int y) override;
};

class GRAPH_CHARTS_EXPORT GraphPointCross : public GraphPoint
{
    Q_OBJECT

public:
    using GraphPoint::GraphPoint;

    void paint(QPainter *painter, int x, int y) override;
};

class GRAPH_CHARTS_EXPORT GraphPointHorizontalLine : public GraphPoint
{
    Q_OBJECT

public:
    using GraphPoint::GraphPoint;

    void paint(QPainter *painter, int x, int y) override;
};

class GRAPH_CHARTS_EXPORT GraphPointVerticalLine : public GraphPoint
{
    Q_OBJECT

public:
    using GraphPoint::GraphPoint;

    void paint(QPainter *painter, int x, int y) override;
};
