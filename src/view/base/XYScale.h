#pragma once

#include "common/Export.h"
#include "view/base/ShiftedItem.h"

#include <QMargins>
#include <QPointer>
#include <QVector>

class AbstractPlot;
class ValueAxis;

// A plane on which axes draw their grid lines and labels. It collects the axes of the view's visible plots that chose
// it, and reports how much room they need at each side.
class GRAPH_CHARTS_EXPORT XYScale : public graph::ShiftedItem
{
    Q_OBJECT

public:
    explicit XYScale(QQuickItem *parent = nullptr);
    ~XYScale() override;

    void setPlots(const QList<AbstractPlot *> &plots);
    // Axes that the plane draws whether a plot uses them or not, before those of the plots.
    void setStandingAxes(const QList<ValueAxis *> &axes);
    void setAxes(const QList<ValueAxis *> &axes);
    // What the plane's own axes need.
    QMargins margins() const { return m_margins; }
    // Between the plane's edges and the plot area, which the view insets for all of its planes.
    void setPlotAreaMargins(const QMargins &margins);

public slots:
    void handleAxesChanged();
    void handleMarginsChanged();

signals:
    void marginsChanged(int left, int right, int top, int bottom);

protected:
    void paintShifted(QPainter *painter) override;
    QSGNode *updatePaintNode(QSGNode *old, UpdatePaintNodeData *data) override;

private:
    void paintLabels(QPainter *painter, const QRectF &plotRect);
    int marginAt(Qt::Alignment side);
    void repaintWith(ValueAxis *axis);

    QVector<QPointer<ValueAxis>> m_axes;
    QVector<QPointer<ValueAxis>> m_standingAxes;
    QVector<QPointer<AbstractPlot>> m_plots;
    // Axes whose repaint requests reach this plane; a connection made once stays for the life of the axis.
    QVector<QPointer<ValueAxis>> m_repaintingAxes;
    QMargins m_margins;
    QMargins m_plotAreaMargins;
};
