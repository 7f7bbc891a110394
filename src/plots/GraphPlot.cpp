#include "plots/GraphPlot.h"

#include "common/SceneExit.h"
#include "data/PlotData.h"
#include "plots/TracePainting.h"

#include <cmath>

/*!
    \qmltype GraphPlot
    \inqmlmodule graph_plugin
    \inherits AbstractPlot
    \brief Draws the samples of its data as an area, a line, an envelope, bars or points.

    Data with more than one sample per pixel column is drawn as one stroke per column from the smallest to the largest
    sample, so that no peak is lost. Samples that are not finite leave a gap.

    Sparse data is drawn between visible samples only: zoomed in, a line ends at its last visible sample, and there is
    none while the view lies between two samples. In dense data a line drops to the baseline at columns without a
    sample, and samples equal to the baseline are not drawn, unless plotBaseline is set. So bursts of points with
    pauses between them look like no signal; scatter them.
*/
GraphPlot::GraphPlot(QQuickItem *parent)
    : AbstractPlot(parent)
{
}

GraphPlot::~GraphPlot()
{
    graph::leaveScene(this);
}

/*!
    \qmlproperty enumeration GraphPlot::plotStyle
    FillPlot, LinePlot, MaxLinePlot, MinLinePlot, BarPlot (default) or ScatterPlot. MaxLinePlot and MinLinePlot follow
    the largest and the smallest sample of each pixel column and are lines where the data is sparser than that.
*/
void GraphPlot::setPlotStyle(PlotStyle style)
{
    if (m_plotStyle == style)
        return;
    m_plotStyle = style;
    update();
    emit plotStyleChanged(style);
}

/*!
    \qmlproperty bool GraphPlot::plotBaseline
    Draws the baseline of bars, keeps columns without a sample at it, and shows scattered points that lie on it. False
    by default.
*/
void GraphPlot::setPlotBaseline(bool on)
{
    if (m_plotBaseline == on)
        return;
    m_plotBaseline = on;
    update();
    emit plotBaselineChanged(on);
}

/*!
    \qmlproperty int GraphPlot::minLineWidth
    The least width of a stroke in pixels, and the width of the strokes of dense data; 2 by default.
*/
void GraphPlot::setMinLineWidth(int width)
{
    if (m_minLineWidth == width)
        return;
    m_minLineWidth = width;
    update();
    emit minLineWidthChanged(width);
}

/*!
    \qmlproperty int GraphPlot::maxLineWidth
    The greatest width of a stroke in pixels, reached where samples lie far apart; 16 by default.
*/
void GraphPlot::setMaxLineWidth(int width)
{
    if (m_maxLineWidth == width)
        return;
    m_maxLineWidth = width;
    update();
    emit maxLineWidthChanged(width);
}

/*!
    \qmlproperty bool GraphPlot::useIntermittentPlot
    Whether pixel columns without a sample stay empty (true, the default) or repeat the column before. A change shows
    with the next repaint and is not announced.
*/
void GraphPlot::setUseIntermittentPlot(bool on)
{
    m_useIntermittentPlot = on;
}

/*!
    \qmlproperty bool GraphPlot::useTransparencyForFillPlot
    Whether the area of a FillPlot is translucent; true by default.
*/
void GraphPlot::setUseTransparencyForFillPlot(bool on)
{
    if (m_useTransparencyForFillPlot == on)
        return;
    m_useTransparencyForFillPlot = on;
    update();
    emit useTransparencyForFillPlotChanged(on);
}

/*!
    \qmlproperty int GraphPlot::selectedPoint
    The index of the scattered point that is drawn as selected; -1, the default, for none.
*/
void GraphPlot::setSelectedPoint(int index)
{
    if (m_selectedPoint == index)
        return;
    m_selectedPoint = index;
    update();
    emit selectedPointChanged(index);
}

/*!
    \qmlproperty GraphPoint GraphPlot::graphPoint
    What a ScatterPlot draws at each sample; round dots, and one warning a sample, while it is null. A decoration that
    is destroyed leaves it null.
*/
void GraphPlot::setGraphPoint(GraphPoint *point)
{
    if (m_graphPoint == point)
        return;
    if (m_graphPoint)
        disconnect(m_graphPoint, nullptr, this, SLOT(sltGraphPointDataChanged()));
    m_graphPoint = point;
    if (point) {
        connect(point, SIGNAL(pointChanged()), this, SLOT(sltGraphPointDataChanged()));
        connect(point, SIGNAL(destroyed()), this, SLOT(sltGraphPointDataChanged()));
    }
    update();
    emit graphPointChanged(point);
}

void GraphPlot::sltGraphPointDataChanged()
{
    update();
}

/*!
    \qmlmethod void GraphPlot::forceUpdate()
    Asks for a repaint.
*/
void GraphPlot::forceUpdate()
{
    update();
}

/*!
    \qmlmethod int GraphPlot::checkClickPosition(double x, double y, double threshold)
    The index of the first scattered point within \a threshold pixels of the click in both directions, -1 for none or
    in any other style. The click is given in pixels of the whole data extent at the present zoom, as a Flickable's
    content has them.
*/
int GraphPlot::checkClickPosition(double x, double y, double threshold) const
{
    // Not asked for isValid(), which follows the data only with the next pass of the event loop.
    if (m_plotStyle != ScatterPlot || !plotData())
        return -1;
    const graph::PixelMapping mapping = pixelMapping();
    if (!mapping.isDrawable())
        return -1;
    const QPointF click = clickInItem(x, y, mapping);
    const graph::SampleSpan samples = plotData()->sampleSpan(visibleRect());
    for (int i = 0; i < samples.size(); ++i) {
        if (!mapping.hasPlace(samples.x(i), samples.y(i)))
            continue;
        const int column = mapping.column(samples.x(i));
        const int row = mapping.row(samples.y(i));
        if (std::abs(click.x() - column) <= threshold && std::abs(click.y() - row) <= threshold)
            return samples.dataIndex(i);
    }
    return -1;
}

void GraphPlot::paintPlot(const graph::PlotFrame &frame)
{
    if (!plotData())
        return;
    graph::SampleSpan samples = plotData()->sampleSpan(frame.visibleRect);
    if (!plotData()->usePointsAsSegments())
        samples = inOrderOfColumns(samples);
    if (!samples.isEmpty())
        graph::TracePainting(traceStyle(), frame, samples).paint();
}

graph::TraceStyle GraphPlot::traceStyle() const
{
    graph::TraceStyle style;
    style.shape = graph::TraceStyle::Shape(m_plotStyle);
    style.color = penColor();
    style.baseline = baseline();
    style.showsBaseline = m_plotBaseline;
    style.minLineWidth = m_minLineWidth;
    style.maxLineWidth = m_maxLineWidth;
    style.isIntermittent = m_useIntermittentPlot;
    style.isFillTranslucent = m_useTransparencyForFillPlot;
    style.isSegments = plotData()->usePointsAsSegments();
    style.visible = {visibleRangeX(), visibleRangeY()};
    style.columns = graph::pixel(width());
    style.point = m_graphPoint;
    style.selectedPoint = m_selectedPoint;
    return style;
}

bool GraphPlot::paintsStrokesOnly() const
{
    const bool isLine = m_plotStyle == LinePlot || m_plotStyle == MaxLinePlot || m_plotStyle == MinLinePlot;
    // Dense lines of odd widths are no rectangles.
    return isLine && m_minLineWidth >= 2 && m_minLineWidth % 2 == 0 && penColor().alpha() == 255;
}
