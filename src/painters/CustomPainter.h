#pragma once

#include "common/Export.h"
#include "painters/BasePainter.h"

#include <QPolygonF>
#include <QVector>

// Lines or a filled polygon through points in data units. A point that is not finite ends one and begins the next.
class GRAPH_CHARTS_EXPORT CustomPainter : public BasePainter
{
    Q_OBJECT
    Q_PROPERTY(QVector<double> xData READ xData WRITE setXData NOTIFY xDataChanged)
    Q_PROPERTY(QVector<double> yData READ yData WRITE setYData NOTIFY yDataChanged)
    Q_PROPERTY(QPointF origin READ origin WRITE setOrigin NOTIFY originChanged)
    Q_PROPERTY(bool pixelShape READ pixelShape WRITE setPixelShape NOTIFY pixelShapeChanged)
    Q_PROPERTY(bool closed READ closed WRITE setClosed NOTIFY closedChanged)
    Q_PROPERTY(QColor lineColor READ lineColor WRITE setLineColor NOTIFY lineColorChanged)
    Q_PROPERTY(int lineWidth READ lineWidth WRITE setLineWidth NOTIFY lineWidthChanged)
    Q_PROPERTY(QColor fillColor READ fillColor WRITE setFillColor NOTIFY fillColorChanged)
    Q_PROPERTY(double fillOpacity READ fillOpacity WRITE setFillOpacity NOTIFY fillOpacityChanged)

public:
    explicit CustomPainter(QQuickItem *parent = nullptr);

    QVector<double> xData() const { return m_xData; }
    QVector<double> yData() const { return m_yData; }
    QPointF origin() const { return m_origin; }
    bool pixelShape() const { return m_pixelShape; }
    bool closed() const { return m_closed; }
    QColor lineColor() const { return m_lineColor; }
    int lineWidth() const { return m_lineWidth; }
    QColor fillColor() const { return m_fillColor; }
    double fillOpacity() const { return m_fillOpacity; }

    Q_INVOKABLE bool containsPoint(double x, double y) const;

    void paint(QPainter *painter, const QRectF &visibleRect, float scaleX, float scaleY) override;

public slots:
    void setXData(const QVector<double> &xData);
    void setYData(const QVector<double> &yData);
    void setOrigin(const QPointF &origin);
    void setPixelShape(bool pixelShape);
    void setClosed(bool closed);
    void setLineColor(const QColor &color);
    void setLineWidth(int width);
    void setFillColor(const QColor &color);
    void setFillOpacity(double opacity);

signals:
    void xDataChanged();
    void yDataChanged();
    void originChanged();
    void pixelShapeChanged();
    void closedChanged();
    void lineColorChanged();
    void lineWidthChanged();
    void fillColorChanged();
    void fillOpacityChanged();

private:
    void fill(QPainter *painter, const QVector<QPolygonF> &shapes, const QRectF &clip) const;
    void stroke(QPainter *painter, const QVector<QPolygonF> &shapes, const QRectF &clip) const;

    QVector<double> m_xData;
    QVector<double> m_yData;
    QPointF m_origin;
    bool m_pixelShape = false;
    bool m_closed = true;
    QColor m_lineColor{"black"};
    int m_lineWidth = 1;
    QColor m_fillColor = Qt::transparent;
    double m_fillOpacity = 0.375;
};
