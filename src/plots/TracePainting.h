#pragma once

#include "data/SampleSpan.h"
#include "view/base/PlotFrame.h"

#include <QPen>
#include <QSizeF>

class GraphPoint;

namespace graph {

struct ColumnEnvelope;

// How samples are shown.
struct TraceStyle
{
    // The numbers of GraphPlot::PlotStyle.
    enum Shape : int { Fill, Line, MaxLine, MinLine, Bars, Scatter };

    Shape shape = Fill;
    QColor color;
    double baseline = 0.0;
    bool showsBaseline = false; // values that equal it as well
    int minLineWidth = 0;
    int maxLineWidth = 0;
    bool isIntermittent = false; // columns without samples stay empty
    bool isFillTranslucent = false;
    bool isSegments = false; // each two points are a line
    QSizeF visible;          // range of x and y
    int columns = 0;
    GraphPoint *point = nullptr;
    int selectedPoint = -1;
};

// Paints samples in a style, once. Sparse samples are painted one by one, dense ones as
// the extremes of each pixel column.
class TracePainting
{
public:
    // samples: at least one.
    TracePainting(const TraceStyle &style, const PlotFrame &frame, const SampleSpan &samples);

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

    const TraceStyle &m_style;
    QPainter *m_painter;
    const PixelMapping &m_mapping;
    const SampleSpan &m_samples;
    double m_baseline;
    int m_baseRow;
    QPen m_pen;
};

} // namespace graph
