#pragma once

#include "common/Export.h"
#include "plots/GraphPlot.h"

#include <QPointer>

// A miniature of another plot: mirrors its data, axes and style but, unless told otherwise, shows the full value range
// of the axes instead of the visible part.
class GRAPH_CHARTS_EXPORT WorldPlot : public GraphPlot
{
    Q_OBJECT
    Q_PROPERTY(GraphPlot *graphPlot READ graphPlot WRITE setGraphPlot NOTIFY graphPlotChanged)
    Q_PROPERTY(bool scaleAxisX READ scaleAxisX WRITE setScaleAxisX NOTIFY scaleAxisXChanged)
    Q_PROPERTY(bool scaleAxisY READ scaleAxisY WRITE setScaleAxisY NOTIFY scaleAxisYChanged)

public:
    explicit WorldPlot(QQuickItem *parent = nullptr);

    GraphPlot *graphPlot() const { return m_graphPlot; }
    bool scaleAxisX() const { return m_scaleAxisX; }
    bool scaleAxisY() const { return m_scaleAxisY; }

    double minVisibleX() const override;
    double minVisibleY() const override;
    double maxVisibleX() const override;
    double maxVisibleY() const override;
    double visibleRangeX() const override;
    double visibleRangeY() const override;

public slots:
    void setGraphPlot(GraphPlot *plot);
    void setScaleAxisX(bool scale);
    void setScaleAxisY(bool scale);

signals:
    void graphPlotChanged(GraphPlot *graphPlot);
    void scaleAxisXChanged();
    void scaleAxisYChanged();

private:
    void follow(GraphPlot *plot);

    QPointer<GraphPlot> m_graphPlot;
    bool m_scaleAxisX = false;
    bool m_scaleAxisY = false;
};
