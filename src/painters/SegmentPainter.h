#pragma once

#include "common/Export.h"
#include "painters/BasePainter.h"

// A straight line between two points in data units, with vertical bars in pixels at its ends.
class GRAPH_CHARTS_EXPORT SegmentPainter : public BasePainter
{
    Q_OBJECT
    Q_PROPERTY(double point1X READ point1X WRITE setPoint1X NOTIFY point1XChanged)
    Q_PROPERTY(double point1Y READ point1Y WRITE setPoint1Y NOTIFY point1YChanged)
    Q_PROPERTY(double point2X READ point2X WRITE setPoint2X NOTIFY point2XChanged)
    Q_PROPERTY(double point2Y READ point2Y WRITE setPoint2Y NOTIFY point2YChanged)
    Q_PROPERTY(QColor segmentColor READ segmentColor WRITE setSegmentColor NOTIFY segmentColorChanged)
    Q_PROPERTY(int lineWidth READ lineWidth WRITE setLineWidth NOTIFY lineWidthChanged)
    Q_PROPERTY(Qt::PenStyle lineStyle READ lineStyle WRITE setLineStyle NOTIFY lineStyleChanged)
    Q_PROPERTY(int endSize READ endSize WRITE setEndSize NOTIFY endSizeChanged)

public:
    explicit SegmentPainter(QQuickItem *parent = nullptr);

    double point1X() const { return m_point1X; }
    double point1Y() const { return m_point1Y; }
    double point2X() const { return m_point2X; }
    double point2Y() const { return m_point2Y; }
    QColor segmentColor() const { return m_segmentColor; }
    int lineWidth() const { return m_lineWidth; }
    Qt::PenStyle lineStyle() const { return m_lineStyle; }
    int endSize() const { return m_endSize; }

    void paint(QPainter *painter, const QRectF &visibleRect, float scaleX, float scaleY) override;

public slots:
    void setPoint1X(double x);
    void setPoint1Y(double y);
    void setPoint2X(double x);
    void setPoint2Y(double y);
    void setSegmentColor(const QColor &color);
    void setLineWidth(int width);
    void setLineStyle(Qt::PenStyle style);
    void setEndSize(int size);

signals:
    void point1XChanged();
    void point1YChanged();
    void point2XChanged();
    void point2YChanged();
    void segmentColorChanged();
    void lineWidthChanged();
    void lineStyleChanged();
    void endSizeChanged();

private:
    void paintOnScreen(QPainter *painter, const graph::PixelMapping &place) const;
    // isFirst, isSecond: whether an end is that of the whole line.
    void draw(QPainter *painter, const QPoint &begin, const QPoint &end, bool isFirst, bool isSecond) const;
    void drawEnd(QPainter *painter, const QPoint &end) const;

    double m_point1X = 0.0;
    double m_point1Y = 0.0;
    double m_point2X = 0.0;
    double m_point2Y = 0.0;
    QColor m_segmentColor{"black"};
    int m_lineWidth = 1;
    Qt::PenStyle m_lineStyle = Qt::SolidLine;
    int m_endSize = 0;
};
