#pragma once

#include "kit/plots/DataExtent.h"
#include "kit/plots/TraceCanvas.h"
#include "kit/plots/TraceRows.h"

namespace graph {

// How a trace is drawn.
struct TraceLook
{
    enum Style : int { Line, Area, Steps, Bars, Points, LineAndPoints };

    // How far an area reaches from the line.
    enum Fill { ToBaseline, ToTop, ToBottom };

    Style style = Line;
    Fill fill = ToBaseline;
    QColor color;
    int lineWidth = 2;
    double fillOpacity = 0.25;
    double baseline = 0.0; // in data units
    bool curved = false;   // lines through sparse samples are curves
    BarNeighbours loneBar; // where there is no other sample
};

// Paints a trace, once, into an item of the mapping's size. Pixel columns with many samples are painted from
// their extremes, so that the cost follows the width of the item.
class GRAPH_CHARTS_EXPORT TraceStrokes
{
public:
    // The widest line that is drawn by the rows of its pixel columns: a wider one would be too thick where it slopes.
    static constexpr int widestOnColumns = 4;
    // The widest line at all.
    static constexpr int widestLine = 64;

    // samples: from left to right, with those outside of the item that the line runs on to.
    TraceStrokes(const TraceLook &look, const PixelMapping &mapping, const SampleSpan &samples);

    void paint(TraceCanvas &canvas) const;

    // How many pixels beyond its sample a dot covers.
    static int reachOfDots(int lineWidth);

    // The same for pairs of samples that are separate lines; style and order count for nothing.
    static void paintSegments(TraceCanvas &canvas, const TraceLook &look, const PixelMapping &mapping,
                              const SampleSpan &samples);

private:
    void paintLine(TraceCanvas &canvas, bool isFilled) const;
    // Whether all samples are joined.
    bool paintRows(TraceCanvas &canvas, const std::vector<TraceColumn> &columns, bool isFilled) const;
    void paintPath(TraceCanvas &canvas, const std::vector<TraceColumn> &columns, bool isFilled) const;
    void paintBars(TraceCanvas &canvas) const;
    void paintPoints(TraceCanvas &canvas) const;
    void paintLoneSamples(TraceCanvas &canvas) const;
    TraceCourse course() const;
    int baseRow() const;

    TraceLook m_look;
    const PixelMapping &m_mapping;
    const SampleSpan &m_samples;
    std::vector<TraceColumn> m_columns;
};

} // namespace graph
