#include "view/base/AbstractPlot.h"

#include "axis/ValueAxis.h"
#include "common/ExtentUpTo.h"
#include "common/SceneExit.h"
#include "common/VectorRegisters.h"
#include "data/PlotData.h"
#include "view/base/ParentZoom.h"
#include "view/base/PeakBetween.h"
#include "view/base/StrokeNode.h"
#include "view/zoom/ZoomRect.h"

#include <QPainter>

namespace {

QPointF farCorner(const QRectF &rect)
{
    return QPointF(rect.x() + rect.width(), rect.y() + rect.height());
}

// Not normalised.
QRectF spanned(const QPointF &first, const QPointF &second)
{
    return QRectF(first, QSizeF(second.x() - first.x(), second.y() - first.y()));
}

graph::ScaleKind scaleKindOf(const ValueAxis *axis)
{
    return axis ? axis->scaleKind() : graph::ScaleKind::Linear;
}

} // namespace

/*!
    \qmltype AbstractPlot
    \inqmlmodule graph_plugin
    \brief What all plots have in common: data, two axes, a pen colour and the mapping between data and
   pixels.

    Use GraphPlot, AreaPlot and the other plots. Inside a GraphView a plot joins the view's zoom.
    The mapping functions mapToItem and mapFromItem take one point in data units; they hide the functions of
   the same names of Item.

    \qmlproperty enumeration AbstractPlot::renderTarget
    The property of Qt's painted items, \c FramebufferObject by default. Unless it is \c Image, what the plot
   draws is shifted by one pixel to the right and downwards. A framebuffer on OpenGL takes that back; the
   software scene graph
    (\c {QT_QUICK_BACKEND=software}) does not: there the trace is one pixel away from the grid lines, and the
   plot's last column and row are cut off. Write \c {renderTarget: GraphPlot.Image} where that scene graph is
   used. With Qt 6, which paints every item into an image, nothing is shifted.

    \qmlproperty ZoomRect AbstractPlot::zoomRect
    \readonly
    The zoom rectangle of the plot's parent item, followed where the parent's property of this name has a
   notify signal; null where there is no such property. Without a notify signal of its own.
*/
AbstractPlot::AbstractPlot(QQuickItem *parent)
    : ShiftedItem(parent)
{
    setFlag(ItemHasContents);
    setRenderTarget(FramebufferObject);
    setOpaquePainting(false);
    setAntialiasing(false);
    // A parent given here was announced before this class could hear of it.
    if (parent)
        followZoomRectOfParent();
}

AbstractPlot::~AbstractPlot()
{
    graph::leaveScene(this);
}

ZoomRect *AbstractPlot::zoomRect() const
{
    return m_zoomRect;
}

ValueAxis *AbstractPlot::axisX() const
{
    return m_axisX;
}

ValueAxis *AbstractPlot::axisY() const
{
    return m_axisY;
}

ValueAxis *AbstractPlot::refusedAxisX() const
{
    return m_refusedAxisX;
}

ValueAxis *AbstractPlot::refusedAxisY() const
{
    return m_refusedAxisY;
}

PlotData *AbstractPlot::plotData() const
{
    return m_plotData;
}

double AbstractPlot::baseline() const
{
    return m_plotData ? m_plotData->baseline() : 0.0;
}

QRectF AbstractPlot::visibleRect() const
{
    return QRectF(minVisibleX(), minVisibleY(),
                  graph::extentUpTo(minVisibleX(), visibleRangeX(), maxVisibleX()),
                  graph::extentUpTo(minVisibleY(), visibleRangeY(), maxVisibleY()));
}

graph::PixelMapping AbstractPlot::pixelMapping() const
{
    return graph::PixelMapping(scaleX(), scaleY(), QSizeF(width(), height()));
}

QPointF AbstractPlot::clickInItem(double x, double y, const graph::PixelMapping &mapping) const
{
    // From the whole extent's left and top to those of the item.
    const double left = m_axisX ? m_axisX->axisRange().shownEnds().begin : minValueX();
    const double top = m_axisY ? m_axisY->axisRange().shownEnds().end : maxValueY();
    return {x + mapping.x(left), y + mapping.y(top)};
}

graph::SampleSpan AbstractPlot::inOrderOfColumns(const graph::SampleSpan &samples) const
{
    return m_axisX && m_axisX->isReversed() ? samples.reversed() : samples;
}

graph::PixelScale AbstractPlot::scaleX() const
{
    return {scaleKindOf(m_axisX), {minVisibleX(), maxVisibleX()}, visibleRangeX(), width()};
}

graph::PixelScale AbstractPlot::scaleY() const
{
    return {scaleKindOf(m_axisY), {maxVisibleY(), minVisibleY()}, -visibleRangeY(), height()};
}

void AbstractPlot::paintShifted(QPainter *painter)
{
    const graph::PlotFrame frame{painter, pixelMapping(), visibleRect()};
    if (!isPaintable(frame.mapping))
        return;
    // The scene graph's own drawing, before this, may have left them in use.
    graph::clearWideRegisters();
    paintPlot(frame);
}

bool AbstractPlot::isPaintable(const graph::PixelMapping &mapping) const
{
    return m_valid && mapping.isDrawable();
}

bool AbstractPlot::paintsStrokesOnly() const
{
    return false;
}

QSGNode *AbstractPlot::updatePaintNode(QSGNode *old, UpdatePaintNodeData *data)
{
    QSGNode *strokes = nullptr;
    if (paintsStrokesOnly())
        strokes = graph::strokedNode(this, old);
    else
        old = graph::withoutStrokes(old);
    return strokes ? strokes : QQuickPaintedItem::updatePaintNode(old, data);
}

void AbstractPlot::paintPlot(const graph::PlotFrame &) {}

// Without an axis the defaults of x and y differ; documents rely on each of them.

/*!
    \qmlmethod double AbstractPlot::minValueX()
    \qmlmethod double AbstractPlot::maxValueX()
    \qmlmethod double AbstractPlot::minValueY()
    \qmlmethod double AbstractPlot::maxValueY()
    The full range of an axis in its unit. Without the axis 1 and 1 for x, 0 and 0 for y.

    \qmlmethod double AbstractPlot::minVisibleX()
    \qmlmethod double AbstractPlot::maxVisibleX()
    \qmlmethod double AbstractPlot::minVisibleY()
    \qmlmethod double AbstractPlot::maxVisibleY()
    The range of values that the item shows, in the unit of the axis; 0 and 0 without the axis. A WorldPlot shows the
    full range unless its scaleAxisX or scaleAxisY is set.

    \qmlmethod double AbstractPlot::visibleRangeX()
    \qmlmethod double AbstractPlot::visibleRangeY()
    The extent of that range; 1 without the axis.
*/
double AbstractPlot::maxValueX() const
{
    return m_axisX ? m_axisX->maxValue() : 1.0;
}

double AbstractPlot::maxValueY() const
{
    return m_axisY ? m_axisY->maxValue() : 0.0;
}

double AbstractPlot::minValueX() const
{
    return m_axisX ? m_axisX->minValue() : 1.0;
}

double AbstractPlot::minValueY() const
{
    return m_axisY ? m_axisY->minValue() : 0.0;
}

double AbstractPlot::minVisibleX() const
{
    return m_axisX ? m_axisX->minVisible() : 0.0;
}

double AbstractPlot::minVisibleY() const
{
    return m_axisY ? m_axisY->minVisible() : 0.0;
}

double AbstractPlot::maxVisibleX() const
{
    return m_axisX ? m_axisX->maxVisible() : 0.0;
}

double AbstractPlot::maxVisibleY() const
{
    return m_axisY ? m_axisY->maxVisible() : 0.0;
}

double AbstractPlot::visibleRangeX() const
{
    return m_axisX ? m_axisX->maxVisible() - m_axisX->minVisible() : 1.0;
}

double AbstractPlot::visibleRangeY() const
{
    return m_axisY ? m_axisY->maxVisible() - m_axisY->minVisible() : 1.0;
}

/*!
    \qmlmethod double AbstractPlot::mapToItemX(double x)
    \qmlmethod double AbstractPlot::mapToItemY(double y)
    The item coordinate in pixels of a value of an axis; not rounded, except that a value which misses a whole pixel
    only by a rounding error falls on it. The smallest visible x falls on pixel column 0 and the greatest on the last
    one; the greatest visible y falls on pixel row 0. A zero visible range gives an infinity or NaN.

    \qmlmethod double AbstractPlot::mapFromItemX(double px)
    \qmlmethod double AbstractPlot::mapFromItemY(double py)
    The value at an item coordinate in pixels, in the unit of the axis. An item of one pixel gives an infinity or NaN.

    \qmlmethod point AbstractPlot::mapToItem(point point)
    \qmlmethod point AbstractPlot::mapFromItem(point point)
    The same for both coordinates of a point. They take the place of the functions of Item that name a second item:
    for those call \c {other.mapFromItem(plot, x, y)}.

    \qmlmethod rect AbstractPlot::mapRectToItem(rect rect)
    \qmlmethod rect AbstractPlot::mapRectFromItem(rect rect)
    Maps two opposite corners. The result is not normalised: y grows upwards in the data and downwards in the item, so
    a positive height becomes a negative one.
*/
QRectF AbstractPlot::mapRectToItem(QRectF rect) const
{
    return spanned(mapToItem(rect.topLeft()), mapToItem(farCorner(rect)));
}

QRectF AbstractPlot::mapRectFromItem(QRectF rect) const
{
    return spanned(mapFromItem(rect.topLeft()), mapFromItem(farCorner(rect)));
}

/*!
    \qmlmethod double AbstractPlot::getVisibleSpanYPeak()
    The largest y, in units of the vertical axis, of the samples inside the visible x range; the vertical axis'
    minValue when there is none, 0 without a vertical axis.
*/
double AbstractPlot::getVisibleSpanYPeak() const
{
    if (!m_axisY)
        return 0.0;
    const double least = m_axisY->minValue();
    if (!m_axisX)
        return least;
    double first = m_axisX->minVisible();
    double last = m_axisX->maxVisible();
    if (m_axisX->isReversed())
        std::swap(first, last);
    return m_plotData ? graph::peakBetween(*m_plotData, first, last, least) : least;
}

void AbstractPlot::setZoomRect(ZoomRect *zoomRect)
{
    if (m_zoomRect == zoomRect)
        return;
    if (m_zoomRect)
        disconnect(m_zoomRect, nullptr, this, nullptr);
    m_zoomRect = zoomRect;
    if (!zoomRect)
        return;
    // The view repaints its own children; a plot elsewhere (an overview) has to hear of the zoom itself.
    connect(zoomRect, SIGNAL(rectChanged(QRectF)), this, SLOT(update()));
    if (m_axisX)
        m_axisX->setZoomRect(zoomRect);
    if (m_axisY)
        m_axisY->setZoomRect(zoomRect);
}

/*!
    \qmlproperty PlotData AbstractPlot::plotData
    The data that is drawn, null by default. The plot takes over the data's axes and follows them; data that is
    destroyed leaves the property null.
*/
void AbstractPlot::setPlotData(PlotData *data)
{
    if (m_announcedData == data)
        return;
    if (m_plotData)
        disconnect(m_plotData, nullptr, this, nullptr);
    m_plotData = data;
    m_announcedData = data;
    if (data) {
        connect(data, SIGNAL(destroyed()), this, SLOT(setPlotData()));
        connect(data, SIGNAL(plotChanged()), this, SLOT(handlePlotChanged()));
        if (data->axisX())
            setAxisX(data->axisX());
        connect(data, SIGNAL(axisXChanged(ValueAxis *)), this, SLOT(setAxisX(ValueAxis *)));
        if (data->axisY())
            setAxisY(data->axisY());
        connect(data, SIGNAL(axisYChanged(ValueAxis *)), this, SLOT(setAxisY(ValueAxis *)));
    }
    emit plotDataChanged(data);
    handlePlotChanged();
}

/*!
    \qmlproperty ValueAxis AbstractPlot::axisX
    The horizontal axis, null by default. A vertical axis is ignored. Give the axis its \c alignment as a plain
    literal: a binding may be evaluated only after the plot has asked for the orientation.
*/
void AbstractPlot::setAxisX(ValueAxis *axis)
{
    if (takeAxis(axis, Qt::Vertical, m_axisX, m_refusedAxisX))
        emit axisXChanged(axis);
}

/*!
    \qmlproperty ValueAxis AbstractPlot::axisY
    The vertical axis, null by default. A horizontal axis is ignored; see axisX.
*/
void AbstractPlot::setAxisY(ValueAxis *axis)
{
    if (takeAxis(axis, Qt::Horizontal, m_axisY, m_refusedAxisY))
        emit axisYChanged(axis);
}

// In the place of the present one, unless it is that or has the direction that is not wanted.
bool AbstractPlot::takeAxis(ValueAxis *axis, Qt::Orientation unwanted, QPointer<ValueAxis> &present,
                            QPointer<ValueAxis> &refused)
{
    const bool isRefused = axis && axis->orientation() == unwanted;
    refused = isRefused ? axis : nullptr;
    if (present == axis || isRefused)
        return false;
    if (present)
        disconnect(present, nullptr, this, nullptr);
    present = axis;
    followAxis(axis);
    return true;
}

void AbstractPlot::followAxis(ValueAxis *axis)
{
    update();
    if (!axis)
        return;
    connect(axis, SIGNAL(axisChanged()), this, SLOT(update()));
    // An axis without a zoom rectangle does not count a moved visible edge as a change of the axis.
    connect(axis, SIGNAL(minVisibleChanged(double)), this, SLOT(update()));
    connect(axis, SIGNAL(maxVisibleChanged(double)), this, SLOT(update()));
    connect(axis, SIGNAL(destroyed()), this, SLOT(update()));
    if (m_zoomRect)
        axis->setZoomRect(m_zoomRect);
}

/*!
    \qmlproperty color AbstractPlot::penColor
    The colour of the trace, black by default. The plot shows it with its next repaint.
*/
void AbstractPlot::setPenColor(QColor color)
{
    if (m_penColor == color)
        return;
    m_penColor = color;
    emit penColorChanged(color);
}

/*!
    \qmlproperty bool AbstractPlot::valid
    \readonly
    True while there is data with at least one sample.
*/
void AbstractPlot::handlePlotChanged()
{
    setValid(m_plotData && m_plotData->size() != 0);
    update();
}

void AbstractPlot::setValid(bool valid)
{
    if (m_valid == valid)
        return;
    m_valid = valid;
    emit validChanged(valid);
}

void AbstractPlot::itemChange(ItemChange change, const ItemChangeData &data)
{
    if (change == ItemParentHasChanged)
        followZoomRectOfParent();
    QQuickPaintedItem::itemChange(change, data);
}

void AbstractPlot::followZoomRectOfParent()
{
    // In a document the parent's binding may not have been evaluated when the plot arrives.
    graph::followZoomRect(parentItem(), this, "adoptZoomRectOfParent()");
    adoptZoomRectOfParent();
}

void AbstractPlot::adoptZoomRectOfParent()
{
    setZoomRect(graph::zoomRectOf(parentItem()));
}

void AbstractPlot::componentComplete()
{
    QQuickPaintedItem::componentComplete();
}

void AbstractPlot::GRAPH_GEOMETRY_CHANGED(const QRectF &newGeometry, const QRectF &oldGeometry)
{
    QQuickPaintedItem::GRAPH_GEOMETRY_CHANGED(newGeometry, oldGeometry);
}
