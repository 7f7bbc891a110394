#pragma once

#include "common/Export.h"
#include "common/QtVersion.h"

#include <QMargins>
#include <QPointer>
#include <QQmlListProperty>
#include <QQuickItem>
#include <QVector>

class AbstractPlot;
class GraphCursor;
class PlotData;
class ValueAxis;
class XYScale;
class ZoomRect;

Q_MOC_INCLUDE("axis/ValueAxis.h")
Q_MOC_INCLUDE("data/PlotData.h")
Q_MOC_INCLUDE("view/zoom/ZoomRect.h")

// The container of one chart. Once QML has built all children it wires them together: scales, axes, plots, cursors and
// a flickable. The content item is the plot area: everything but the scales fills it.
class GRAPH_CHARTS_EXPORT GraphView : public QQuickItem
{
    Q_OBJECT
    Q_PROPERTY(ZoomRect *zoomRect READ zoomRect CONSTANT)
    Q_PROPERTY(QQmlListProperty<ValueAxis> axes READ axes NOTIFY axesChanged)
    Q_PROPERTY(QQmlListProperty<PlotData> series READ series NOTIFY seriesChanged)

public:
    explicit GraphView(QQuickItem *parent = nullptr);
    ~GraphView() override;

    ZoomRect *zoomRect() const;
    QQmlListProperty<ValueAxis> axes();
    QQmlListProperty<PlotData> series();

    // What the view has found among its children.
    QList<AbstractPlot *> plots() const;
    bool hasPlot(const AbstractPlot *plot) const;
    // The item that plots and cursors fill.
    QQuickItem *plotArea() const { return m_contentItem; }

signals:
    void axesChanged();
    void seriesChanged();

protected:
    void componentComplete() override;
    void GRAPH_GEOMETRY_CHANGED(const QRectF &now, const QRectF &before) override;

    // For views that take children at any time, or wire them in another way.
    virtual void adoptChild(QQuickItem *child);
    void addPlot(AbstractPlot *plot);
    void removePlot(AbstractPlot *plot);
    void addCursor(GraphCursor *cursor);
    void stretch(QQuickItem *child, QQuickItem *over);
    // Room around the plot area besides that of the axes: the wider one counts on each side.
    virtual QMargins reservedMargins() const { return {}; }
    // Whether cursors stop at its samples.
    virtual bool isRead(const AbstractPlot &) const { return true; }

protected slots:
    void updateChildren();
    void handlePlotVisibilityChanged();
    void handleMarginsChanged(int left = 0, int right = 0, int top = 0, int bottom = 0);

private:
    template <typename T> struct ListFunctions;

    void findScales();
    void assignPlanes();
    void placePlotArea(const QSizeF &size);

    QVector<QPointer<ValueAxis>> m_axes;
    QVector<QPointer<PlotData>> m_series;
    // Both are the view's own, and yet a document that reaches them can delete them.
    QPointer<QQuickItem> m_contentItem;
    QMargins m_margins; // around it
    bool m_isPlotAreaPlaced = false;
    QPointer<ZoomRect> m_zoomRect;
    QPointer<XYScale> m_defaultScale;
    QVector<QPointer<XYScale>> m_scales;
    QPointer<GraphCursor> m_cursor;
    QVector<QPointer<GraphCursor>> m_cursors;
    QVector<QPointer<AbstractPlot>> m_plots;
};
