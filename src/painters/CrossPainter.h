#pragma once

#include "common/Export.h"
#include "painters/BasePainter.h"

// A cross at a point in data units; not drawn outside the visible range.
class GRAPH_CHARTS_EXPORT CrossPainter : public BasePainter
{
    Q_OBJECT
    Q_PROPERTY(double point1X READ point1X WRITE setPoint1X NOTIFY point1XChanged)
    Q_PROPERTY(double point1Y READ point1Y WRITE setPoint1Y NOTIFY point1YChanged)
    Q_PROPERTY(QColor crossColor READ crossColor WRITE setCrossColor NOTIFY crossColorChanged)
    Q_PROPERTY(int lineWidth READ lineWidth WRITE setLineWidth NOTIFY lineWidthChanged)
    Q_PROPERTY(int crossSize READ crossSize WRITE setCrossSize NOTIFY crossSizeChanged)

public:
    explicit CrossPainter(QQuickItem *parent = nullptr);

    double point1X() const { return m_point1X; }
    double point1Y() const { return m_point1Y; }
    QColor crossColor() const { return m_crossColor; }
    int lineWidth() const { return m_lineWidth; }
    int crossSize() const { return m_crossSize; }

    void paint(QPainter *painter, const QRectF &visibleRect, float scaleX, float scaleY) override;

public slots:
    void setPoint1X(double x);
    void setPoint1Y(double y);
    void setCrossColor(const QColor &color);
    void setLineWidth(int width);
    void setCrossSize(int size);

signals:
    void point1XChanged();
    void point1YChanged();
    void crossColorChanged();
    void lineWidthChanged();
    void crossSizeChanged();

private:
    double m_point1X = 0.0;
    double m_point1Y = 0.0;
    QColor m_crossColor{"black"};
    int m_lineWidth = 1;
    int m_crossSize = 2;
};
