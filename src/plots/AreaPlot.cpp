#include "plots/AreaPlot.h"

#include "plots/AreaStrokes.h"
#include "plots/SampleDensity.h"
#include "raster/PixelCentres.h"
#include "raster/Strokes.h"

#include <QPainter>
#include <QPainterPath>

#include <cmath>

/*!
    \qmltype AreaPlot
    \inqmlmodule graph_plugin
    \inherits AbstractPlot
    \brief Fills the band between two traces, paired sample by sample.

    It is valid, and drawn, while both traces are there and have the same number of samples, at least one. A
    pair of samples of which one is not finite is left out.
*/
AreaPlot::AreaPlot(QQuickItem *parent)
    : AbstractPlot(parent)
{
    // Giving up a data object drops all connections from it, also those of another role that it still has.
    connect(this, SIGNAL(plotDataChanged(PlotData *)), this, SLOT(connectData()));
}

/*!
    \qmlproperty PlotData AreaPlot::maxData
    The upper trace, null by default. The samples' x is used for both traces, and the plot takes over the
    axes.
*/
void AreaPlot::setMaxData(PlotData *data)
{
    if (m_maxData == data)
        return;
    replace(m_maxData, data);
    emit maxDataChanged(data);
    handlePlotChanged();
}

/*!
    \qmlproperty PlotData AreaPlot::minData
    The lower trace, null by default. The plot takes over the axes.
*/
void AreaPlot::setMinData(PlotData *data)
{
    if (m_minData == data)
        return;
    replace(m_minData, data);
    emit minDataChanged(data);
    handlePlotChanged();
}

void AreaPlot::replace(QPointer<PlotData> &envelope, PlotData *data)
{
    if (envelope)
        disconnect(envelope, nullptr, this, nullptr);
    envelope = data;
    connectData();
    if (data && data->axisX())
        setAxisX(data->axisX());
    if (data && data->axisY())
        setAxisY(data->axisY());
}

void AreaPlot::connectData()
{
    for (PlotData *data : {plotData(), maxData(), minData()}) {
        if (!data)
            continue;
        // An envelope that is destroyed takes the plot's own data along and is announced no further. Without
        // such data that alone changes nothing.
        connect(data, SIGNAL(destroyed()), this, SLOT(setPlotData()), Qt::UniqueConnection);
        connect(data, SIGNAL(destroyed()), this, SLOT(handlePlotChanged()), Qt::UniqueConnection);
        connect(data, SIGNAL(plotChanged()), this, SLOT(handlePlotChanged()), Qt::UniqueConnection);
        connect(data, SIGNAL(axisXChanged(ValueAxis *)), this, SLOT(setAxisX(ValueAxis *)),
                Qt::UniqueConnection);
        connect(data, SIGNAL(axisYChanged(ValueAxis *)), this, SLOT(setAxisY(ValueAxis *)),
                Qt::UniqueConnection);
    }
}

void AreaPlot::handlePlotChanged()
{
    setValid(m_maxData && m_minData && m_maxData->size() > 0 && m_maxData->size() == m_minData->size());
    update();
}

void AreaPlot::paintPlot(const graph::PlotFrame &frame)
{
    if (!m_maxData || !m_minData)
        return;
    const graph::SampleSpan upper = inOrderOfColumns(m_maxData->sampleSpan(frame.visibleRect));
    const graph::SampleSpan lower = inOrderOfColumns(m_minData->sampleSpan(frame.visibleRect));
    if (upper.isEmpty() || upper.size() != lower.size())
        return;
    if (graph::sampleDensity(upper, frame.mapping, visibleRangeX()) <= graph::densestDirectPaint) {
        fillPolygon(frame, upper, lower);
        return;
    }
    QPen pen(penColor(), 1);
    pen.setCapStyle(Qt::FlatCap);
    frame.painter->setPen(pen);
    const bool ascending = !m_maxData->usePointsAsSegments();
    const graph::PixelCentres across(frame.painter, {1, 0});
    graph::drawUprightLines(
        frame.painter, graph::areaStrokes(upper, lower, frame.mapping, graph::pixel(width()), ascending));
}

void AreaPlot::fillPolygon(const graph::PlotFrame &frame, const graph::SampleSpan &upper,
                           const graph::SampleSpan &lower) const
{
    const auto isDrawable = [&](int i) {
        return frame.mapping.hasPlace(upper.x(i), upper.y(i)) && frame.mapping.hasPlaceY(lower.y(i));
    };
    const auto point = [&](int i, double y) {
        return QPointF(graph::coordinate(frame.mapping.x(upper.x(i))), graph::coordinate(frame.mapping.y(y)));
    };
    QPainterPath path;
    for (int begin = 0, end = 0; begin < upper.size(); begin = end + 1) {
        for (end = begin; end < upper.size() && isDrawable(end); ++end) {
            if (end == begin)
                path.moveTo(point(end, upper.y(end)));
            else
                path.lineTo(point(end, upper.y(end)));
        }
        for (int i = end - 1; i >= begin; --i)
            path.lineTo(point(i, lower.y(i)));
        if (end > begin)
            path.closeSubpath();
    }
    graph::fillOutline(frame.painter, path, QBrush(penColor(), Qt::SolidPattern));
}
