#pragma once

#include "common/Export.h"
#include "plots/GraphPoint.h"
#include "view/base/AbstractPlot.h"

#include <QPointer>

namespace graph {
struct TraceStyle;
}

// The main trace renderer: paints the samples of its data as a filled area, a line, an envelope, bars or scattered
// points. Data denser than the pixel columns is reduced to the extremes of each column.
class GRAPH_CHARTS_EXPORT GraphPlot : public AbstractPlot
{
    Q_OBJECT
    Q_PROPERTY(PlotStyle plotStyle READ plotStyle WRITE setPlotStyle NOTIFY plotStyleChanged)
    Q_PROPERTY(bool plotBaseline READ plotBaseline WRITE setPlotBaseline NOTIFY plotBaselineChanged)
    Q_PROPERTY(int minLineWidth READ minLineWidth WRITE setMinLineWidth NOTIFY minLineWidthChanged)
    Q_PROPERTY(int maxLineWidth READ maxLineWidth WRITE setMaxLineWidth NOTIFY maxLineWidthChanged)
    Q_PROPERTY(bool useIntermittentPlot READ useIntermittentPlot WRITE setUseIntermittentPlot NOTIFY
                   useIntermittentPlotChanged)
    Q_PROPERTY(bool useTransparencyForFillPlot READ useTransparencyForFillPlot WRITE
                   setUseTransparencyForFillPlot NOTIFY useTransparencyForFillPlotChanged)
    Q_PROPERTY(int selectedPoint READ selectedPoint WRITE setSelectedPoint NOTIFY selectedPointChanged)
    Q_PROPERTY(GraphPoint *graphPoint READ graphPoint WRITE setGraphPoint NOTIFY graphPointChanged)

public:
    enum PlotStyle : int { FillPlot, LinePlot, MaxLinePlot, MinLinePlot, BarPlot, ScatterPlot };
    Q_ENUM(PlotStyle)

    explicit GraphPlot(QQuickItem *parent = nullptr);
    ~GraphPlot() override;

    PlotStyle plotStyle() const { return m_plotStyle; }
    bool plotBaseline() const { return m_plotBaseline; }
    int minLineWidth() const { return m_minLineWidth; }
    int maxLineWidth() const { return m_maxLineWidth; }
    bool useIntermittentPlot() const { return m_useIntermittentPlot; }
    bool useTransparencyForFillPlot() const { return m_useTransparencyForFillPlot; }
    int selectedPoint() const { return m_selectedPoint; }
    GraphPoint *graphPoint() const { return m_graphPoint; }

    Q_INVOKABLE void forceUpdate();
    Q_INVOKABLE int checkClickPosition(double x, double y, double threshold) const;

public slots:
    void setPlotStyle(PlotStyle style);
    void setPlotBaseline(bool on);
    void setMinLineWidth(int width);
    void setMaxLineWidth(int width);
    void setUseIntermittentPlot(bool on);
    void setUseTransparencyForFillPlot(bool on);
    void setSelectedPoint(int index);
    void setGraphPoint(GraphPoint *point);

signals:
    void plotStyleChanged(PlotStyle plotStyle);
    void plotBaselineChanged(bool plotBaseline);
    void minLineWidthChanged(int minLineWidth);
    void maxLineWidthChanged(int maxLineWidth);
    void useIntermittentPlotChanged(bool useIntermittentPlot);
    void useTransparencyForFillPlotChanged(bool useTransparencyForFillPlot);
    void selectedPointChanged(int selectedPoint);
    void graphPointChanged(GraphPoint *graphPoint);

protected:
    void paintPlot(const graph::PlotFrame &frame) override;
    bool paintsStrokesOnly() const override;

private slots:
    void sltGraphPointDataChanged();

private:
    graph::TraceStyle traceStyle() const;

    PlotStyle m_plotStyle = BarPlot;
    QPointer<GraphPoint> m_graphPoint;
    bool m_plotBaseline = false;
    int m_minLineWidth = 2;
    int m_maxLineWidth = 16;
    bool m_useIntermittentPlot = true;
    bool m_useTransparencyForFillPlot = true;
    int m_selectedPoint = -1;
};
