#include "painters/IntegralPainter.h"

#include "common/Opacity.h"
#include "common/SafeInteger.h"
#include "data/ColumnSearch.h"
#include "raster/PixelCentres.h"
#include "raster/PolygonGeometry.h"
#include "raster/Strokes.h"

#include <QPainter>
#include <QPainterPath>
#include <QTimerEvent>

#include <limits>

// Data values to item coordinates; y is bounded to just outside the visible rows, where a cut is not seen.
struct IntegralPainter::Frame
{
    QRectF visibleRect;
    graph::PixelMapping mapping;
    // The stretch to draw, in data units: begin..end, cut one pixel outside the visible range.
    double left = 0.0;
    double right = 0.0;

    double x(double value) const { return mapping.x(value); }
    double y(double value) const
    {
        return qBound(-graph::farthestCoordinate, mapping.y(value), graph::farthestCoordinate);
    }
    double valueOfColumn(int column) const { return mapping.valueX(column); }
    double lowestRow() const { return mapping.height(); }
    double boundedY(double value) const { return qBound(-1.0, y(value), lowestRow()); }
};

/*!
    \qmltype IntegralPainter
    \inherits BasePainter
    \brief The area between a trace and a base level, drawn and computed between two limits.

    Samples that are not finite are gaps: neither drawn nor counted.
*/
IntegralPainter::IntegralPainter(QQuickItem *parent)
    : BasePainter(parent)
{
    connect(this, SIGNAL(plotDataChanged()), this, SIGNAL(updateNeeded()));
    connect(this, SIGNAL(beginChanged()), this, SIGNAL(updateNeeded()));
    connect(this, SIGNAL(endChanged()), this, SIGNAL(updateNeeded()));
    connect(this, SIGNAL(baseLevelChanged()), this, SIGNAL(updateNeeded()));
    connect(this, SIGNAL(integralColorChanged()), this, SIGNAL(updateNeeded()));
    connect(this, SIGNAL(fillOpacityChanged()), this, SIGNAL(updateNeeded()));
    connect(this, SIGNAL(lineWidthChanged()), this, SIGNAL(updateNeeded()));
    connect(this, SIGNAL(logarithmicChanged()), this, SIGNAL(updateNeeded()));
    connect(this, SIGNAL(plotParentChanged()), this, SLOT(handlePlotParentChanged()));
}

void IntegralPainter::paint(QPainter *painter, const QRectF &visibleRect, float scaleX, float scaleY)
{
    const graph::Curve trace = curve();
    Frame frame{visibleRect, mapping(visibleRect, scaleX, scaleY), 0.0, 0.0};
    double first = frame.valueOfColumn(-1);
    double last = frame.mapping.valueX(frame.mapping.width());
    const bool isReversed = first > last;
    if (isReversed)
        std::swap(first, last);
    frame.left = qMax(qMin(m_begin, m_end), first);
    frame.right = qMin(qMax(m_begin, m_end), last);
    if (trace.samples.isEmpty() || !(frame.left <= frame.right) || std::isnan(m_baseLevel))
        return;
    painter->save();
    const graph::SampleSpan &samples = trace.samples;
    // The same density as that at which a plot turns from single samples to columns.
    const double columns = frame.mapping.isLinearX() ? (frame.right - frame.left) * frame.mapping.scaleX()
                                                     : frame.x(frame.right) - frame.x(frame.left);
    const bool isDense =
        !trace.isSegments && !isReversed &&
        samples.countUpTo(frame.right) - samples.countBelow(frame.left) > 1.001 * columns + 1.0;
    if (isDense)
        fillColumns(painter, trace, frame);
    else
        fillLines(painter, trace, frame);
    drawEdges(painter, trace, frame);
    painter->restore();
}

/*!
    \qmlproperty PlotData IntegralPainter::plotData
    The trace; while null, the default, the data of plotParent is used.
*/
void IntegralPainter::setPlotData(PlotData *data)
{
    if (m_plotData == data)
        return;
    // By slot: the same object may also be followed as the data of plotParent.
    if (m_plotData) {
        disconnect(m_plotData, nullptr, this, SLOT(handlePlotChanged()));
        disconnect(m_plotData, nullptr, this, SLOT(handlePlotDataDestroyed()));
    }
    m_plotData = data;
    if (data) {
        connect(data, SIGNAL(plotChanged()), this, SLOT(handlePlotChanged()));
        connect(data, SIGNAL(destroyed()), this, SLOT(handlePlotDataDestroyed()));
    }
    emit plotDataChanged();
    recompute();
}

/*!
    \qmlproperty double IntegralPainter::begin
    First limit in units of the horizontal axis, 0 by default.
*/
void IntegralPainter::setBegin(double begin)
{
    if (m_begin == begin)
        return;
    m_begin = begin;
    emit beginChanged();
    recompute();
}

/*!
    \qmlproperty double IntegralPainter::end
    Second limit in units of the horizontal axis, 0 by default. Left of the first one it makes the value
    negative.
*/
void IntegralPainter::setEnd(double end)
{
    if (m_end == end)
        return;
    m_end = end;
    emit endChanged();
    recompute();
}

/*!
    \qmlproperty double IntegralPainter::baseLevel
    The y from which the area is counted, in units of the vertical axis, 0 by default.
*/
void IntegralPainter::setBaseLevel(double baseLevel)
{
    if (m_baseLevel == baseLevel)
        return;
    m_baseLevel = baseLevel;
    emit baseLevelChanged();
    recompute();
}

/*!
    \qmlproperty color IntegralPainter::integralColor
    Colour of the area and of its edges, black by default.
*/
void IntegralPainter::setIntegralColor(const QColor &color)
{
    if (m_integralColor == color)
        return;
    m_integralColor = color;
    emit integralColorChanged();
}

/*!
    \qmlproperty double IntegralPainter::fillOpacity
    Opacity of the area, clamped to 0..1; 0.375 by default.
*/
void IntegralPainter::setFillOpacity(double opacity)
{
    const double bounded = graph::boundedOpacity(opacity);
    if (m_fillOpacity == bounded)
        return;
    m_fillOpacity = bounded;
    emit fillOpacityChanged();
}

/*!
    \qmlproperty int IntegralPainter::lineWidth
    Width in pixels of the vertical lines at the limits, 1 by default; 0 draws none.
*/
void IntegralPainter::setLineWidth(int width)
{
    if (m_lineWidth == width)
        return;
    m_lineWidth = width;
    emit lineWidthChanged();
}

/*!
    \qmlproperty bool IntegralPainter::logarithmic
    True for a trace in decibels: its powers are summed, and the value is their total in decibels. The
    base level and the order of the limits then do not count. False by default.
*/
void IntegralPainter::setLogarithmic(bool logarithmic)
{
    if (m_logarithmic == logarithmic)
        return;
    m_logarithmic = logarithmic;
    emit logarithmicChanged();
    recompute();
}

/*!
    \qmlproperty double IntegralPainter::value
    \readonly
    The area in x units times y units, or the total in decibels; 0 without data. It follows a change with the
    next pass of the event loop.
*/
void IntegralPainter::updateValue()
{
    const double value = m_logarithmic ? graph::logarithmicIntegral(curve(), m_begin, m_end)
                                       : graph::integral(curve(), m_begin, m_end, m_baseLevel);
    if (m_value == value || (std::isnan(m_value) && std::isnan(value)))
        return;
    m_value = value;
    emit valueChanged();
}

void IntegralPainter::timerEvent(QTimerEvent *event)
{
    if (event->timerId() != m_valueTimer.timerId()) {
        BasePainter::timerEvent(event);
        return;
    }
    m_valueTimer.stop();
    updateValue();
}

void IntegralPainter::handlePlotParentChanged()
{
    if (plotParent())
        connect(plotParent(), SIGNAL(plotDataChanged(PlotData *)), this, SLOT(handleParentDataChanged()));
    handleParentDataChanged();
}

void IntegralPainter::handleParentDataChanged()
{
    PlotData *data = plotParent() ? plotParent()->plotData() : nullptr;
    if (m_parentData != data) {
        if (m_parentData)
            disconnect(m_parentData, nullptr, this, SLOT(handleParentPlotChanged()));
        m_parentData = data;
        if (data)
            connect(data, SIGNAL(plotChanged()), this, SLOT(handleParentPlotChanged()));
    }
    handleParentPlotChanged();
}

void IntegralPainter::handlePlotChanged()
{
    recompute();
    emit updateNeeded();
}

void IntegralPainter::handleParentPlotChanged()
{
    if (!m_plotData)
        handlePlotChanged();
}

void IntegralPainter::handlePlotDataDestroyed()
{
    emit plotDataChanged();
    recompute();
}

graph::Curve IntegralPainter::curve() const
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    const PlotData *data = m_plotData ? m_plotData : m_parentData;
    // All samples: those beside the limits are needed too.
    return data ? graph::Curve{data->sampleSpan(-infinity, infinity), data->usePointsAsSegments()}
                : graph::Curve();
}

void IntegralPainter::recompute()
{
    if (!m_valueTimer.isActive()) // else data that changes in every pass would postpone it for ever
        m_valueTimer.start(0, this);
}

void IntegralPainter::fillLines(QPainter *painter, const graph::Curve &curve, const Frame &frame) const
{
    QPainterPath path;
    // Areas side by side never overlap, and those above the base level run the other way round than those
    // below it.
    path.setFillRule(Qt::WindingFill);
    const double base = frame.boundedY(m_baseLevel);
    graph::visitLines(curve, frame.left, frame.right, [&](const QPointF &from, const QPointF &to) {
        const QPointF a(frame.x(from.x()), frame.y(from.y()));
        const QPointF b(frame.x(to.x()), frame.y(to.y()));
        path.moveTo(a.x(), base);
        path.lineTo(a.x(), frame.boundedY(from.y()));
        // Where the line passes the upper or lower bound it bends into it.
        double bends[] = {-1.0, frame.lowestRow()};
        if (a.y() > b.y())
            std::swap(bends[0], bends[1]);
        for (double bend : bends) {
            if ((a.y() < bend) != (b.y() < bend))
                path.lineTo(a.x() + (b.x() - a.x()) * ((bend - a.y()) / (b.y() - a.y())), bend);
        }
        path.lineTo(b.x(), frame.boundedY(to.y()));
        path.lineTo(b.x(), base);
        path.closeSubpath();
    });
    graph::fillOutline(painter, path, graph::translucent(m_integralColor, m_fillOpacity));
}

void IntegralPainter::fillColumns(QPainter *painter, const graph::Curve &curve, const Frame &frame) const
{
    const graph::SampleSpan &samples = curve.samples;
    const int baseRow = graph::pixel(frame.boundedY(m_baseLevel));
    const double left = qMax(frame.left, frame.visibleRect.x());
    const double right = qMin(frame.right, frame.visibleRect.x() + frame.visibleRect.width());
    const int firstColumn = frame.mapping.column(left);
    const int lastColumn = frame.mapping.column(right);
    graph::ColumnSearch search(samples, frame.mapping);
    QVector<QLine> strokes;
    int first = samples.countBelow(left);
    int run = 1;
    for (int column = firstColumn; column <= lastColumn; ++column) {
        const bool isLast = column == lastColumn;
        const int end = isLast ? samples.countUpTo(right, first) : search.endOf(column, first, run);
        graph::MinMax extremes = samples.minMax(first, end);
        const auto addPoint = [&](double x) {
            const double y = graph::interpolatedY(curve, x);
            extremes.add(std::isnan(y) ? graph::MinMax() : graph::MinMax{y, y});
        };
        // The curve at the limits, and in a column between two distant samples.
        if (column == firstColumn || first == end)
            addPoint(qMax(left, frame.valueOfColumn(column)));
        if (isLast)
            addPoint(right);
        run = end - first;
        first = end;
        const bool above = extremes.max - m_baseLevel >= m_baseLevel - extremes.min;
        const double farthest = above ? extremes.max : extremes.min;
        const int row = graph::pixel(frame.boundedY(farthest));
        if (std::isfinite(farthest) && row != baseRow)
            strokes.append(QLine(column, baseRow, column, row));
    }
    painter->setPen(QPen(graph::translucent(m_integralColor, m_fillOpacity), 1, Qt::SolidLine, Qt::FlatCap));
    const graph::PixelCentres across(painter, {1, 0});
    graph::drawUprightLines(painter, strokes);
}

void IntegralPainter::drawEdges(QPainter *painter, const graph::Curve &curve, const Frame &frame) const
{
    const int width = graph::penWidth(m_lineWidth);
    if (width == 0)
        return;
    painter->setPen(QPen(m_integralColor, width, Qt::SolidLine, Qt::FlatCap));
    const graph::PixelCentres across(painter, {1, 0});
    for (double limit : {m_begin, m_end}) {
        const double y = graph::interpolatedY(curve, limit);
        const bool visible = limit >= frame.visibleRect.x() &&
                             limit <= frame.visibleRect.x() + frame.visibleRect.width() && !std::isnan(y);
        if (!visible)
            continue;
        const int column = frame.mapping.column(limit);
        painter->drawLine(column, graph::pixel(frame.boundedY(m_baseLevel)), column,
                          graph::pixel(frame.boundedY(y)));
    }
}
