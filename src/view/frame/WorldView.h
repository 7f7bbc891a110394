#pragma once

#include "common/Export.h"
#include "view/frame/GraphView.h"

#include <QPointer>
#include <QQuickItem>

// Points at a GraphView and republishes its zoom state, for documents that draw an overview of the chart.
class GRAPH_CHARTS_EXPORT WorldView : public QQuickItem
{
    Q_OBJECT
    Q_PROPERTY(GraphView *view READ view WRITE setView NOTIFY viewChanged)
    Q_PROPERTY(ZoomRect *zoomRect READ zoomRect NOTIFY zoomRectChanged)

public:
    explicit WorldView(QQuickItem *parent = nullptr);

    GraphView *view() const { return m_view; }
    ZoomRect *zoomRect() const;

public slots:
    void setView(GraphView *view);

signals:
    void viewChanged(GraphView *view);
    void zoomRectChanged(ZoomRect *zoomRect);

private slots:
    void forgetView();

private:
    QPointer<GraphView> m_view;
};
