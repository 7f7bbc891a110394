#pragma once

#include "common/Export.h"
#include "common/PixelMapping.h"
#include "common/QtVersion.h"
#include "data/SampleSpan.h"
#include "view/base/PlotFrame.h"
#include "view/base/ShiftedItem.h"

#include <QColor>
#include <QPointer>

class PlotData;
class ValueAxis;
class ZoomRect;

Q_MOC_INCLUDE("axis/ValueAxis.h")
Q_MOC_INCLUDE("data/PlotData.h")
Q_MOC_INCLUDE("view/zoom/ZoomRect.h")

// Base of every plot item: binds one data object to a horizontal and a vertical axis and maps data values to the
// pixels of the item. Plots, cursors, markers and painters all use this mapping; subclasses change it by overriding
// the range accessors.
class GRAPH_CHARTS_EXPORT AbstractPlot : public graph::ShiftedItem
{
    Q_OBJECT
    Q_PROPERTY(ZoomRect *zoomRect READ zoomRect CONSTANT)
    Q_PROPERTY(PlotData *plotData READ plotData WRITE setPlotData NOTIFY plotDataChanged)
    Q_PROPERTY(ValueAxis *axisX READ axisX WRITE setAxisX NOTIFY axisXChanged)
    Q_PROPERTY(ValueAxis *axisY READ axisY WRITE setAxisY NOTIFY axisYChanged)
    Q_PROPERTY(QColor penColor READ penColor WRITE setPenColor NOTIFY penColorChanged)
    Q_PROPERTY(bool valid READ isValid NOTIFY validChanged)

public:
    explicit AbstractPlot(QQuickItem *parent = nullptr);
    ~AbstractPlot() override;

    ZoomRect *zoomRect() const;
    PlotData *plotData() const;
    ValueAxis *axisX() const;
    ValueAxis *axisY() const;
    // The axis that was given last, where it had the other direction and was therefore ignored.
    ValueAxis *refusedAxisX() const;
    ValueAxis *refusedAxisY() const;
    QColor penColor() const { return m_penColor; }
    bool isValid() const { return m_valid; }

    void setZoomRect(ZoomRect *zoomRect);
    double baseline() const;
    QRectF visibleRect() const;
    // The present mapping, for a paint or a hit test.
    graph::PixelMapping pixelMapping() const;
    // A click in pixels of the whole data extent at the present zoom as one in the item, as far as the axes show
    // that extent in a positive part only.
    QPointF clickInItem(double x, double y, const graph::PixelMapping &mapping) const;

    Q_INVOKABLE virtual double maxValueX() const;
    Q_INVOKABLE virtual double maxValueY() const;
    Q_INVOKABLE virtual double minValueX() const;
    Q_INVOKABLE virtual double minValueY() const;
    Q_INVOKABLE virtual double minVisibleX() const;
    Q_INVOKABLE virtual double minVisibleY() const;
    Q_INVOKABLE virtual double maxVisibleX() const;
    Q_INVOKABLE virtual double maxVisibleY() const;
    Q_INVOKABLE virtual double visibleRangeX() const;
    Q_INVOKABLE virtual double visibleRangeY() const;

    Q_INVOKABLE double mapToItemX(double x) const { return scaleX().coordinate(x); }
    Q_INVOKABLE double mapFromItemX(double px) const { return scaleX().value(px); }
    Q_INVOKABLE double mapToItemY(double y) const { return scaleY().coordinate(y); }
    Q_INVOKABLE double mapFromItemY(double py) const { return scaleY().value(py); }
    Q_INVOKABLE QPointF mapToItem(QPointF point) const
    {
        return {mapToItemX(point.x()), mapToItemY(point.y())};
    }
    Q_INVOKABLE QPointF mapFromItem(QPointF point) const
    {
        return {mapFromItemX(point.x()), mapFromItemY(point.y())};
    }
    Q_INVOKABLE QRectF mapRectToItem(QRectF rect) const;
    Q_INVOKABLE QRectF mapRectFromItem(QRectF rect) const;
    Q_INVOKABLE double getVisibleSpanYPeak() const;

public slots:
    void setPlotData(PlotData *data = nullptr);
    void setAxisX(ValueAxis *axis);
    void setAxisY(ValueAxis *axis);
    void setPenColor(QColor color);

signals:
    void plotDataChanged(PlotData *plotData);
    void axisXChanged(ValueAxis *axisX);
    void axisYChanged(ValueAxis *axisY);
    void penColorChanged(QColor penColor);
    void validChanged(bool valid);

protected slots:
    virtual void handlePlotChanged();

protected:
    void itemChange(ItemChange change, const ItemChangeData &data) override;
    void componentComplete() override;
    void GRAPH_GEOMETRY_CHANGED(const QRectF &newGeometry, const QRectF &oldGeometry) override;
    QSGNode *updatePaintNode(QSGNode *old, UpdatePaintNodeData *data) override;

    void setValid(bool valid);

    // The one way into painting: prepares what every plot needs and calls paintPlot().
    void paintShifted(QPainter *painter) override;
    // Whether that goes on with this mapping; while there is data that can be mapped, unless a subclass
    // says otherwise.
    virtual bool isPaintable(const graph::PixelMapping &mapping) const;
    virtual void paintPlot(const graph::PlotFrame &frame);
    // Whether that paints opaque strokes alone, as far as is known beforehand: those need no layer. Where it
    // turns out that it did not, it is asked to paint once more.
    virtual bool paintsStrokesOnly() const;

    // Samples of ascending x as they follow each other from left to right.
    graph::SampleSpan inOrderOfColumns(const graph::SampleSpan &samples) const;

    // One direction of the mapping, without asking for the ranges of the other.
    graph::PixelScale scaleX() const;
    graph::PixelScale scaleY() const;

private slots:
    void adoptZoomRectOfParent();

private:
    void followZoomRectOfParent();
    bool takeAxis(ValueAxis *axis, Qt::Orientation unwanted, QPointer<ValueAxis> &present,
                  QPointer<ValueAxis> &refused);
    void followAxis(ValueAxis *axis);

    bool m_valid = false;
    QPointer<ZoomRect> m_zoomRect;
    // Null as soon as the data dies: another plot of the same data may hear of that first and ask around.
    QPointer<PlotData> m_plotData;
    // What was last told by plotDataChanged, to tell "just destroyed" from "never set"; never dereferenced.
    const PlotData *m_announcedData = nullptr;
    QPointer<ValueAxis> m_axisX;
    QPointer<ValueAxis> m_axisY;
    QPointer<ValueAxis> m_refusedAxisX;
    QPointer<ValueAxis> m_refusedAxisY;
    QColor m_penColor = Qt::black;
};
