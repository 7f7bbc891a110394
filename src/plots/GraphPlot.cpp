#include "plots/GraphPlot.h"

#include "common/SceneExit.h"
#include "common/VectorRegisters.h"
#include "data/PlotData.h"
#include "raster/Strokes.h"
#include "plots/ColumnEnvelope.h"
#include "plots/SampleDensity.h"

#include <QDebug>
#include <QPainter>
#include <QPainterPath>
#include <QSignalBlocker>

#include <cmath>

namespace {

constexpr int translucentAlpha = 96;

bool isDrawable(const graph::SampleSpan &samples, int i)
{
    return std::isfinite(samples.x(i)) && std::isfinite(samples.y(i));
}

// The width of one sample in pixels; a lone sample is as wide as can be.
int sampleWidth(double density)
{
    return density > 0.0 ? graph::pixel(std::ceil(1.0 / density)) : graph::pixelLimit;
}

QPen penOfWidth(QPen pen, int width)
{
    pen.setWidth(width);
    return pen;
}

} // namespace

/*!
    \qmltype GraphPlot
    \inqmlmodule graph_plugin
    \inherits AbstractPlot
    \brief Draws the samples of its data as an area, a line, an envelope, bars or points.

    Data with more than one sample per pixel column is drawn as one stroke per column from the smallest to the largest
    sample, so that no peak is lost. Samples that are not finite leave a gap.
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
    const double clickX = x - (minVisibleX() - minValueX()) * mapping.scaleX();
    const double clickY = y - (maxValueY() - maxVisibleY()) * mapping.scaleY();
    const graph::SampleSpan samples = plotData()->sampleSpan(visibleRect());
    for (int i = 0; i < samples.size(); ++i) {
        if (!isDrawable(samples, i))
            continue;
        const int column = mapping.column(samples.x(i));
        const int row = mapping.row(samples.y(i));
        if (std::abs(clickX - column) <= threshold && std::abs(clickY - row) <= threshold)
            return samples.dataIndex(i);
    }
    return -1;
}

void GraphPlot::paint(QPainter *painter)
{
    if (!isValid() || !plotData())
        return;
    graph::clearWideRegisters();
    const graph::PixelMapping mapping = pixelMapping();
    const graph::SampleSpan samples = plotData()->sampleSpan(visibleRect());
    if (samples.isEmpty() || !mapping.isDrawable())
        return;

    if (renderTarget() != Image)
        painter->translate(1.0, 1.0);
    const double base = std::isfinite(baseline()) ? baseline() : 0.0;
    Frame frame{painter, samples, mapping, base, mapping.row(base), QPen(penColor())};
    frame.pen.setCapStyle(Qt::FlatCap);

    const double density = graph::sampleDensity(samples, width(), visibleRangeX());
    if (density > graph::densestDirectPaint && m_plotStyle != ScatterPlot && !plotData()->usePointsAsSegments())
        paintEnvelope(frame);
    else
        paintDirect(frame, density);
}

void GraphPlot::paintDirect(Frame &frame, double density)
{
    const int lineWidth = clampedLineWidth(sampleWidth(density));
    if (m_graphPoint) {
        m_graphPoint->setPenColor(penColor());
        m_graphPoint->setLineWidth(lineWidth);
    }
    switch (m_plotStyle) {
    case FillPlot:
        paintFill(frame);
        paintLine(frame, lineWidth);
        break;
    case LinePlot:
    case MaxLinePlot:
    case MinLinePlot:
        paintLine(frame, lineWidth);
        break;
    case BarPlot:
        paintBars(frame, lineWidth);
        break;
    case ScatterPlot:
        paintPoints(frame, lineWidth);
        break;
    }
}

void GraphPlot::paintFill(const Frame &frame) const
{
    QPainterPath path;
    bool connected = false;
    for (int i = 0; i < frame.samples.size(); ++i) {
        if (!isDrawable(frame.samples, i)) {
            connected = false;
            continue;
        }
        const QPointF point(graph::coordinate(frame.mapping.x(frame.samples.x(i))),
                            graph::coordinate(frame.mapping.y(frame.samples.y(i))));
        if (connected)
            path.lineTo(point);
        else
            path.moveTo(point);
        connected = true;
    }
    graph::fillToRow(frame.painter, path, frame.baseRow, QBrush(fillColor(), Qt::SolidPattern));
}

void GraphPlot::paintLine(Frame &frame, int lineWidth) const
{
    QPainterPath path;
    const bool segments = plotData()->usePointsAsSegments();
    bool connected = false;
    for (int i = 0; i < frame.samples.size(); ++i) {
        if (segments && i % 2 == 0)
            connected = false;
        if (!isDrawable(frame.samples, i)) {
            connected = false;
            continue;
        }
        const QPointF point(frame.mapping.column(frame.samples.x(i)), frame.mapping.row(frame.samples.y(i)));
        if (connected)
            path.lineTo(point);
        else
            path.moveTo(point);
        connected = true;
    }
    frame.pen.setWidth(lineWidth);
    frame.painter->setPen(frame.pen);
    graph::drawLinePath(frame.painter, path);
}

void GraphPlot::paintBars(Frame &frame, int lineWidth) const
{
    QVector<QLine> bars;
    bars.reserve(frame.samples.size());
    for (int i = 0; i < frame.samples.size(); ++i) {
        if (!isDrawable(frame.samples, i))
            continue;
        const int column = frame.mapping.column(frame.samples.x(i));
        const int row = frame.mapping.row(frame.samples.y(i));
        if (row != frame.baseRow)
            bars.append(QLine(column, frame.baseRow, column, row));
    }
    if (m_plotBaseline)
        drawBaseline(frame, lineWidth);
    frame.pen.setWidth(clampedLineWidth(lineWidth));
    frame.painter->setPen(frame.pen);
    graph::drawUprightLines(frame.painter, bars);
}

void GraphPlot::paintPoints(Frame &frame, int lineWidth) const
{
    QVector<QLine> dots;
    for (int i = 0; i < frame.samples.size(); ++i) {
        const double x = frame.samples.x(i);
        const double y = frame.samples.y(i);
        if (!isDrawable(frame.samples, i) || (y == frame.baseline && !m_plotBaseline))
            continue;
        const int column = frame.mapping.column(x);
        const int row = frame.mapping.row(y);
        if (!m_graphPoint) {
            qWarning("Graph Point is null");
            dots.append(QLine(column, row, column - 1, row - 1));
            continue;
        }
        const int index = frame.samples.dataIndex(i); // several points may have the same x
        m_graphPoint->setPointIndex(index);
        m_graphPoint->setMargins(row, graph::pixel(visibleRangeX() * frame.mapping.scaleX() - column),
                                 graph::pixel(visibleRangeY() * frame.mapping.scaleY() - row), column);
        {
            // Heard by this plot, the change would ask for the next repaint from within this one, without end.
            const QSignalBlocker blocker(m_graphPoint);
            m_graphPoint->setSelected(index == m_selectedPoint);
        }
        m_graphPoint->paint(frame.painter, column, row);
    }
    if (!dots.isEmpty()) {
        frame.pen.setWidth(lineWidth);
        frame.pen.setCapStyle(Qt::RoundCap);
        frame.painter->setPen(frame.pen);
        frame.painter->drawLines(dots);
    }
}

void GraphPlot::drawBaseline(const Frame &frame, int lineWidth) const
{
    // From the column of x = 0, wherever the first visible sample lies.
    const int begin = frame.mapping.column(0.0);
    const int end = frame.mapping.column(frame.samples.last().x());
    frame.painter->setPen(penOfWidth(frame.pen, clampedLineWidth(lineWidth)));
    frame.painter->drawLine(begin, frame.baseRow, end, frame.baseRow);
}

void GraphPlot::paintEnvelope(Frame &frame)
{
    const int columns = graph::pixel(width());
    graph::ColumnEnvelope envelope =
        graph::columnEnvelope(frame.samples, frame.mapping, columns, frame.baseline, !m_useIntermittentPlot);

    if (m_plotStyle == BarPlot) {
        const graph::BarStrokes strokes = graph::barStrokes(envelope, frame.mapping, frame.baseRow);
        frame.painter->setPen(frame.pen);
        graph::drawUprightLines(frame.painter, strokes.bars);
        if (m_plotBaseline && columns >= 1)
            frame.painter->drawLine(0, frame.baseRow, columns - 1, frame.baseRow);
        QColor spreadColor = penColor();
        spreadColor.setAlpha(translucentAlpha);
        frame.pen.setColor(spreadColor);
        frame.painter->setPen(frame.pen);
        graph::drawUprightLines(frame.painter, strokes.spreads);
        return;
    }

    if (m_plotStyle == FillPlot) {
        QPen fillPen = penOfWidth(frame.pen, 1);
        fillPen.setColor(fillColor());
        frame.painter->setPen(fillPen);
        graph::drawUprightLines(frame.painter, graph::fillStrokes(envelope, frame.mapping, frame.baseRow));
    } else if (m_plotStyle == MaxLinePlot) {
        envelope.min = envelope.max;
    } else if (m_plotStyle == MinLinePlot) {
        envelope.max = envelope.min;
    } else if (m_plotStyle != LinePlot) {
        return; // a number that names no style
    }
    graph::joinColumns(envelope, frame.baseline, m_plotBaseline);
    const int lineWidth = graph::penWidth(m_minLineWidth);
    frame.pen.setWidth(lineWidth);
    frame.painter->setPen(frame.pen);
    const double minSpan = lineWidth / frame.mapping.scaleY();
    graph::drawUprightLines(frame.painter, graph::envelopeStrokes(envelope, frame.mapping, minSpan, frame.baseline,
                                                                  m_plotBaseline));
}

int GraphPlot::clampedLineWidth(int width) const
{
    // The lower limit wins where the two contradict each other.
    return graph::penWidth(qMax(m_minLineWidth, qMin(m_maxLineWidth, width)));
}

QColor GraphPlot::fillColor() const
{
    QColor color = penColor();
    if (m_useTransparencyForFillPlot)
        color.setAlpha(translucentAlpha);
    return color;
}
