#include "plots/RegionPlot.h"

#include "common/Opacity.h"
#include "data/PlotRegions.h"

#include <cmath>

RegionPlot::RegionPlot(QQuickItem *parent)
    : AbstractPlot(parent)
    , m_labelFont(QStringLiteral("Roboto"))
{
    m_labelFont.setPixelSize(16);
}

/*!
    \qmlproperty font ChannelPlot::labelFont
    \qmlproperty font GraphBands::labelFont
    The font of the labels: Roboto, 16 pixels by default.
*/
void RegionPlot::setLabelFont(const QFont &font)
{
    if (m_labelFont == font)
        return;
    m_labelFont = font;
    update();
    emit labelFontChanged(font);
}

/*!
    \qmlproperty color ChannelPlot::labelPen
    \qmlproperty color GraphBands::labelPen
    The colour of the labels, black by default.
*/
void RegionPlot::setLabelPen(const QColor &color)
{
    if (m_labelPen == color)
        return;
    m_labelPen = color;
    update();
    emit labelPenChanged(color);
}

/*!
    \qmlproperty double ChannelPlot::fillOpacity
    \qmlproperty double GraphBands::fillOpacity
    The opacity of the regions' areas, clamped to 0..1; 0.375 by default.
*/
void RegionPlot::setFillOpacity(double opacity)
{
    const double bounded = graph::boundedOpacity(opacity);
    if (m_fillOpacity == bounded)
        return;
    m_fillOpacity = bounded;
    update();
    emit fillOpacityChanged(bounded);
}

PlotRegions *RegionPlot::regions() const
{
    return qobject_cast<PlotRegions *>(plotData());
}

QVector<RegionPlot::Entry> RegionPlot::visibleRegions() const
{
    QVector<Entry> visible;
    const PlotRegions *data = regions();
    if (!data)
        return visible;
    const graph::SampleSpan samples = data->sampleSpan(minVisibleX(), maxVisibleX());
    for (int i = 0; i < samples.size(); ++i) {
        const int index = samples.dataIndex(i);
        const PlotRegion *region = data->region(index);
        if (region && std::isfinite(region->begin()) && std::isfinite(region->end()))
            visible.append({index, region});
    }
    return visible;
}

QColor RegionPlot::colorOf(const PlotRegion *region) const
{
    return region->color().isValid() ? region->color() : penColor();
}

int RegionPlot::baseRow(const graph::PixelMapping &mapping) const
{
    const int row = mapping.row(std::isfinite(baseline()) ? baseline() : 0.0);
    // On a logarithmic axis 0 is infinitely far below.
    return mapping.isLinearY() ? row : qBound(-1, row, graph::pixel(mapping.height()));
}
