#pragma once

#include "common/Export.h"
#include "data/PlotData.h"
#include "painters/BasePainter.h"
#include "painters/Integral.h"

#include <QBasicTimer>

// The area between a curve and a base level within two limits, in data units, and its size. NaN in a limit, or no
// samples between them, gives 0.
class GRAPH_CHARTS_EXPORT IntegralPainter : public BasePainter
{
    Q_OBJECT
    Q_PROPERTY(PlotData *plotData READ plotData WRITE setPlotData NOTIFY plotDataChanged)
    Q_PROPERTY(double begin READ begin WRITE setBegin NOTIFY beginChanged)
    Q_PROPERTY(double end READ end WRITE setEnd NOTIFY endChanged)
    Q_PROPERTY(double baseLevel READ baseLevel WRITE setBaseLevel NOTIFY baseLevelChanged)
    Q_PROPERTY(QColor integralColor READ integralColor WRITE setIntegralColor NOTIFY integralColorChanged)
    Q_PROPERTY(double fillOpacity READ fillOpacity WRITE setFillOpacity NOTIFY fillOpacityChanged)
    Q_PROPERTY(int lineWidth READ lineWidth WRITE setLineWidth NOTIFY lineWidthChanged)
    Q_PROPERTY(bool logarithmic READ logarithmic WRITE setLogarithmic NOTIFY logarithmicChanged)
    Q_PROPERTY(double value READ value NOTIFY valueChanged)

public:
    explicit IntegralPainter(QQuickItem *parent = nullptr);

    PlotData *plotData() const { return m_plotData; }
    double begin() const { return m_begin; }
    double end() const { return m_end; }
    double baseLevel() const { return m_baseLevel; }
    QColor integralColor() const { return m_integralColor; }
    double fillOpacity() const { return m_fillOpacity; }
    int lineWidth() const { return m_lineWidth; }
    bool logarithmic() const { return m_logarithmic; }
    double value() const { return m_value; }

    void paint(QPainter *painter, const QRectF &visibleRect, float scaleX, float scaleY) override;

public slots:
    void setPlotData(PlotData *data);
    void setBegin(double begin);
    void setEnd(double end);
    void setBaseLevel(double baseLevel);
    void setIntegralColor(const QColor &color);
    void setFillOpacity(double opacity);
    void setLineWidth(int width);
    void setLogarithmic(bool logarithmic);

signals:
    void plotDataChanged();
    void beginChanged();
    void endChanged();
    void baseLevelChanged();
    void integralColorChanged();
    void fillOpacityChanged();
    void lineWidthChanged();
    void logarithmicChanged();
    void valueChanged();

protected:
    void timerEvent(QTimerEvent *event) override;

private slots:
    void handlePlotParentChanged();
    void handleParentDataChanged();
    void handlePlotChanged();
    void handleParentPlotChanged();
    void handlePlotDataDestroyed();

private:
    struct Frame;

    graph::Curve curve() const;
    void recompute();
    void updateValue();
    void fillLines(QPainter *painter, const graph::Curve &curve, const Frame &frame) const;
    void fillColumns(QPainter *painter, const graph::Curve &curve, const Frame &frame) const;
    void drawEdges(QPainter *painter, const graph::Curve &curve, const Frame &frame) const;

    QPointer<PlotData> m_plotData;
    // That of plotParent, which is used in place of plotData.
    QPointer<PlotData> m_parentData;
    double m_begin = 0.0;
    double m_end = 0.0;
    double m_baseLevel = 0.0;
    QColor m_integralColor{"black"};
    double m_fillOpacity = 0.375;
    int m_lineWidth = 1;
    bool m_logarithmic = false;
    double m_value = 0.0;
    QBasicTimer m_valueTimer;
};
