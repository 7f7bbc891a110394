#pragma once

#include "common/Export.h"
#include "common/PixelMapping.h"
#include "view/base/AbstractPlot.h"

#include <QQuickItem>

class QPainter;

// Known to qobject_cast and to QML before the class refers to it; the interface is found only in this order.
class BasePainter;
Q_DECLARE_INTERFACE(BasePainter, "fiber.BasePainter")

// A figure in data coordinates. It does not paint itself: the container plot whose child it is calls paint(),
// so that many figures share one painted item.
class GRAPH_CHARTS_EXPORT BasePainter : public QQuickItem
{
    Q_OBJECT
    Q_INTERFACES(BasePainter)
    Q_PROPERTY(AbstractPlot *plotParent READ plotParent WRITE setPlotParent NOTIFY plotParentChanged)

public:
    explicit BasePainter(QQuickItem *parent = nullptr);

    AbstractPlot *plotParent() const { return m_plotParent; }

    // visibleRect: in data units, y being the lowest visible value; scaleX, scaleY: pixels per data unit.
    // Called on the render thread while the GUI thread waits.
    virtual void paint(QPainter *painter, const QRectF &visibleRect, float scaleX, float scaleY) = 0;

    // As the container calls paint(): with the mapping that its plots use, whose scales paint() has in single precision
    // only.
    void paintWith(const graph::PixelMapping &mapping, QPainter *painter, const QRectF &visibleRect);

public slots:
    void setPlotParent(AbstractPlot *plot);

signals:
    // Asks the container for a repaint.
    void updateNeeded();
    void plotParentChanged();

protected:
    void itemChange(ItemChange change, const ItemChangeData &data) override;

    // Where paint() places data values: as its container does, or by its arguments when something else calls it.
    graph::PixelMapping mapping(const QRectF &visibleRect, float scaleX, float scaleY) const;

private:
    QPointer<AbstractPlot> m_plotParent;
    const graph::PixelMapping *m_mapping = nullptr; // while paintWith() runs
};
