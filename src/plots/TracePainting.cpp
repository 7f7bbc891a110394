#include "plots/TracePainting.h"

#include "plots/ColumnEnvelope.h"
#include "plots/GraphPoint.h"
#include "plots/SampleDensity.h"
#include "raster/LinePoints.h"
#include "raster/PixelCentres.h"
#include "raster/Strokes.h"

#include <QPainter>
#include <QPainterPath>
#include <QSignalBlocker>

#include <cmath>

namespace graph {

namespace {

constexpr int translucentAlpha = 96;

// The width of one sample in pixels; a lone sample is as wide as can be.
int sampleWidth(double density)
{
    return density > 0.0 ? pixel(std::ceil(1.0 / density)) : pixelLimit;
}

QColor translucentColor(QColor color)
{
    color.setAlpha(translucentAlpha);
    return color;
}

} // namespace

TracePainting::TracePainting(const TraceStyle &style, const PlotFrame &frame, const SampleSpan &samples)
    : m_style(style)
    , m_painter(frame.painter)
    , m_mapping(frame.mapping)
    , m_samples(samples)
    , m_baseline(frame.mapping.hasPlaceY(style.baseline) ? style.baseline : 0.0)
    , m_baseRow(frame.mapping.row(m_baseline))
    , m_pen(style.color)
{
    m_pen.setCapStyle(Qt::FlatCap);
}

void TracePainting::paint()
{
    const double density = sampleDensity(m_samples, m_mapping, m_style.visible.width());
    if (density > densestDirectPaint && m_style.shape != TraceStyle::Scatter && !m_style.isSegments)
        paintEnvelope();
    else
        paintDirect(density);
}

void TracePainting::paintDirect(double density)
{
    const int lineWidth = clampedLineWidth(sampleWidth(density));
    if (GraphPoint *point = m_style.point) {
        point->setPenColor(m_style.color);
        point->setLineWidth(lineWidth);
    }
    switch (m_style.shape) {
    case TraceStyle::Fill:
        paintFill();
        paintLine(lineWidth);
        break;
    case TraceStyle::Line:
    case TraceStyle::MaxLine:
    case TraceStyle::MinLine:
        paintLine(lineWidth);
        break;
    case TraceStyle::Bars:
        paintBars(lineWidth);
        break;
    case TraceStyle::Scatter:
        paintPoints(lineWidth);
        break;
    }
}

void TracePainting::paintFill()
{
    QPainterPath path;
    bool connected = false;
    for (int i = 0; i < m_samples.size(); ++i) {
        if (!isDrawable(i)) {
            connected = false;
            continue;
        }
        const QPointF point(coordinate(m_mapping.x(m_samples.x(i))), coordinate(m_mapping.y(m_samples.y(i))));
        if (connected)
            path.lineTo(point);
        else
            path.moveTo(point);
        connected = true;
    }
    fillToRow(m_painter, path, m_baseRow, QBrush(fillColor(), Qt::SolidPattern));
}

void TracePainting::paintLine(int lineWidth)
{
    LinePoints line;
    line.reserve(m_samples.size());
    const bool segments = m_style.isSegments;
    bool connected = false;
    for (int i = 0; i < m_samples.size(); ++i) {
        if (segments && i % 2 == 0)
            connected = false;
        if (!isDrawable(i)) {
            connected = false;
            continue;
        }
        const QPointF point(m_mapping.column(m_samples.x(i)), m_mapping.row(m_samples.y(i)));
        if (connected)
            line.lineTo(point);
        else
            line.moveTo(point);
        connected = true;
    }
    setPen(m_style.color, lineWidth);
    const PixelCentres centred(m_painter);
    drawLinePath(m_painter, line);
}

void TracePainting::paintBars(int lineWidth)
{
    QVector<QLine> bars;
    bars.reserve(m_samples.size());
    for (int i = 0; i < m_samples.size(); ++i) {
        if (!isDrawable(i))
            continue;
        const int column = m_mapping.column(m_samples.x(i));
        const int row = m_mapping.row(m_samples.y(i));
        if (row != m_baseRow)
            bars.append(QLine(column, m_baseRow, column, row));
    }
    setPen(m_style.color, lineWidth);
    const PixelCentres across(m_painter, {1, 0});
    if (m_style.showsBaseline) {
        const PixelCentres along(m_painter, {0, 1});
        // From the column of x = 0, wherever the first visible sample lies.
        m_painter->drawLine(m_mapping.column(0.0), m_baseRow, m_mapping.column(m_samples.last().x()),
                            m_baseRow);
    }
    drawUprightLines(m_painter, bars);
}

void TracePainting::paintPoints(int lineWidth)
{
    QVector<QLine> dots;
    for (int i = 0; i < m_samples.size(); ++i) {
        if (!isDrawable(i) || (m_samples.y(i) == m_baseline && !m_style.showsBaseline))
            continue;
        const int column = m_mapping.column(m_samples.x(i));
        const int row = m_mapping.row(m_samples.y(i));
        if (m_style.point) {
            paintPoint(i, column, row);
        } else {
            qWarning("Graph Point is null");
            dots.append(QLine(column, row, column - 1, row - 1));
        }
    }
    if (!dots.isEmpty()) {
        m_pen.setCapStyle(Qt::RoundCap);
        setPen(m_style.color, lineWidth);
        m_painter->drawLines(dots);
    }
}

void TracePainting::paintPoint(int i, int column, int row)
{
    GraphPoint *point = m_style.point;
    const int index = m_samples.dataIndex(i); // several points may have the same x
    point->setPointIndex(index);
    const double lengthX =
        m_mapping.isLinearX() ? m_style.visible.width() * m_mapping.scaleX() : m_mapping.width() - 1.0;
    const double lengthY =
        m_mapping.isLinearY() ? m_style.visible.height() * m_mapping.scaleY() : m_mapping.height() - 1.0;
    point->setMargins(row, pixel(lengthX - column), pixel(lengthY - row), column);
    {
        // Heard by the plot, the change would ask for the next repaint from within this one, without end.
        const QSignalBlocker blocker(point);
        point->setSelected(index == m_style.selectedPoint);
    }
    point->paint(m_painter, column, row);
}

void TracePainting::paintEnvelope()
{
    ColumnEnvelope envelope =
        columnEnvelope(m_samples, m_mapping, m_style.columns, m_baseline, !m_style.isIntermittent);
    // A logarithmic axis spreads the samples at its begin over many columns each.
    if (!m_mapping.isLinearX() && m_style.shape != TraceStyle::Bars)
        bridgeStraight(envelope, m_samples, m_mapping);
    switch (m_style.shape) {
    case TraceStyle::Fill: {
        setPen(fillColor(), 1);
        const PixelCentres across(m_painter, {1, 0});
        drawUprightLines(m_painter, fillStrokes(envelope, m_mapping, m_baseRow));
        break;
    }
    case TraceStyle::Line:
        break;
    case TraceStyle::MaxLine:
        envelope.min = envelope.max;
        break;
    case TraceStyle::MinLine:
        envelope.max = envelope.min;
        break;
    case TraceStyle::Bars:
        paintEnvelopeBars(envelope);
        return;
    default: // a number that names no style
        return;
    }
    joinColumns(envelope, m_baseline, m_style.showsBaseline);
    const int lineWidth = penWidth(m_style.minLineWidth);
    setPen(m_style.color, lineWidth);
    const PixelCentres across(m_painter, {1, 0});
    const double minSpan = m_mapping.isLinearY() ? lineWidth / m_mapping.scaleY() : lineWidth;
    drawUprightLines(m_painter,
                     envelopeStrokes(envelope, m_mapping, minSpan, m_baseline, m_style.showsBaseline));
}

void TracePainting::paintEnvelopeBars(const ColumnEnvelope &envelope)
{
    const BarStrokes strokes = barStrokes(envelope, m_mapping, m_baseRow);
    const PixelCentres across(m_painter, {1, 0});
    setPen(m_style.color, 1);
    drawUprightLines(m_painter, strokes.bars);
    if (m_style.showsBaseline && envelope.columns() >= 1) {
        const PixelCentres along(m_painter, {0, 1});
        m_painter->drawLine(0, m_baseRow, envelope.columns() - 1, m_baseRow);
    }
    setPen(translucentColor(m_style.color), 1);
    drawUprightLines(m_painter, strokes.spreads);
}

void TracePainting::setPen(const QColor &color, int width)
{
    m_pen.setColor(color);
    m_pen.setWidth(width);
    m_painter->setPen(m_pen);
}

int TracePainting::clampedLineWidth(int width) const
{
    // The lower limit wins where the two contradict each other.
    return penWidth(qMax(m_style.minLineWidth, qMin(m_style.maxLineWidth, width)));
}

QColor TracePainting::fillColor() const
{
    return m_style.isFillTranslucent ? translucentColor(m_style.color) : m_style.color;
}

} // namespace graph
