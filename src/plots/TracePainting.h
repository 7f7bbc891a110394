#pragma once

#include "data/SampleSpan.h"
#include "view/base/PlotFrame.h"

#include <QPen>

class GraphPlot;

namespace graph {

struct ColumnEnvelope;

// Paints the samples of a GraphPlot in its style, once. Sparse samples are painted one by one, dense ones as
// the extremes of each pixel column.
class TracePainting
{
public:
    // samples: at least one.
    TracePainting(const GraphPlot &plot, const PlotFrame &frame, const SampleSpan &samples);

    void paint();

private:
    // Whether the sample has a place.
    bool isDrawable(int i) const { return m_mapping.hasPlace(m_samples.x(i), m_samples.y(i)); }
    void paintDirect(double density);
    void paintFill();
    void paintLine(int lineWidth);
    void paintBars(int lineWidth);
    void paintPoints(int lineWidth);
    void paintPoint(int i, int column, int row);
    void paintEnvelope();
    void paintEnvelopeBars(const ColumnEnvelope &envelope);
    void setPen(const QColor &color, int width);
    int clampedLineWidth(int width) const;
    QColor fillColor() const;

    const GraphPlot &m_plot;
    QPainter *m_painter;
    const PixelMapping &m_mapping;
    const SampleSpan &m_samples;
    double m_baseline;
    int m_baseRow;
    QPen m_pen;
};

} // namespace graph
