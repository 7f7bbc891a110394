#include "view/frame/WorldPlot.h"

#include "axis/ValueAxis.h"
#include "common/ObjectCounter.h"
#include "data/PlotData.h"
#include "view/zoom/ZoomRect.h"

/*!
    \qmltype WorldPlot
    \inqmlmodule graph_plugin
    \inherits GraphPlot
    \brief A miniature of the whole data extent of another GraphPlot.
*/
WorldPlot::WorldPlot(QQuickItem *parent)
    : GraphPlot(parent)
{
    static graph::ObjectCounter counter("WP");
    setMinLineWidth(1);
    setObjectName(counter.nextName());
}

double WorldPlot::minVisibleX() const
{
    if (m_scaleAxisX)
        return GraphPlot::minVisibleX();
    return axisX() ? axisX()->minValue() : 0.0;
}

double WorldPlot::minVisibleY() const
{
    if (m_scaleAxisY)
        return GraphPlot::minVisibleY();
    return axisY() ? axisY()->minValue() : 0.0;
}

double WorldPlot::maxVisibleX() const
{
    if (m_scaleAxisX)
        return GraphPlot::maxVisibleX();
    return axisX() ? axisX()->maxValue() : 0.0;
}

double WorldPlot::maxVisibleY() const
{
    if (m_scaleAxisY)
        return GraphPlot::maxVisibleY();
    return axisY() ? axisY()->maxValue() : 0.0;
}

double WorldPlot::visibleRangeX() const
{
    if (m_scaleAxisX)
        return GraphPlot::visibleRangeX();
    return axisX() ? axisX()->maxValue() - axisX()->minValue() : 1.0;
}

double WorldPlot::visibleRangeY() const
{
    if (m_scaleAxisY)
        return GraphPlot::visibleRangeY();
    return axisY() ? axisY()->maxValue() - axisY()->minValue() : 1.0;
}

/*!
    \qmlproperty bool WorldPlot::scaleAxisX
    Whether the miniature zooms horizontally with the chart; false by default, then it shows the axis' full range.
    Takes effect with the next repaint.
*/
void WorldPlot::setScaleAxisX(bool scale)
{
    if (m_scaleAxisX == scale)
        return;
    m_scaleAxisX = scale;
    emit scaleAxisXChanged();
}

/*!
    \qmlproperty bool WorldPlot::scaleAxisY
    The vertical counterpart of scaleAxisX.
*/
void WorldPlot::setScaleAxisY(bool scale)
{
    if (m_scaleAxisY == scale)
        return;
    m_scaleAxisY = scale;
    emit scaleAxisYChanged();
}

/*!
    \qmlproperty GraphPlot WorldPlot::graphPlot
    The plot that is mirrored, null by default. A plot cannot mirror itself.
*/
void WorldPlot::setGraphPlot(GraphPlot *plot)
{
    if (m_graphPlot == plot || plot == this)
        return;
    if (m_graphPlot)
        disconnect(m_graphPlot, nullptr, this, nullptr);
    m_graphPlot = plot;
    if (plot)
        follow(plot);
    update();
    emit graphPlotChanged(plot);
}

void WorldPlot::follow(GraphPlot *plot)
{
    setZoomRect(plot->zoomRect());
    setPlotData(plot->plotData());
    connect(plot, SIGNAL(plotDataChanged(PlotData *)), this, SLOT(setPlotData(PlotData *)));
    setAxisX(plot->axisX());
    connect(plot, SIGNAL(axisXChanged(ValueAxis *)), this, SLOT(setAxisX(ValueAxis *)));
    setAxisY(plot->axisY());
    connect(plot, SIGNAL(axisYChanged(ValueAxis *)), this, SLOT(setAxisY(ValueAxis *)));
    setPenColor(plot->penColor());
    connect(plot, SIGNAL(penColorChanged(QColor)), this, SLOT(setPenColor(QColor)));
    setPlotStyle(plot->plotStyle());
    connect(plot, SIGNAL(plotStyleChanged(PlotStyle)), this, SLOT(setPlotStyle(PlotStyle)));
    setPlotBaseline(plot->plotBaseline());
    connect(plot, SIGNAL(plotBaselineChanged(bool)), this, SLOT(setPlotBaseline(bool)));
}
