#include "kit/plots/Trace.h"

#include "axis/ValueAxis.h"
#include "kit/axis/AxisUnit.h"
#include "kit/data/NumberList.h"
#include "kit/data/Store.h"
#include "kit/data/Telling.h"
#include "kit/plots/CurvedLine.h"
#include "kit/plots/PainterCanvas.h"
#include "kit/plots/PlotPlace.h"
#include "kit/plots/PlotUnits.h"
#include "kit/plots/TraceMesh.h"
#include "kit/plots/TraceSource.h"
#include "kit/plots/TraceStrokes.h"
#include "view/base/TriangleNode.h"

#include <QQuickWindow>
#include <QSGRendererInterface>

#include <algorithm>

namespace graph {

namespace {

TraceLook lookOf(const Trace &trace)
{
    TraceLook look;
    look.style = static_cast<TraceLook::Style>(trace.style());
    look.color = trace.penColor();
    look.lineWidth = trace.lineWidth();
    look.fillOpacity = trace.fillOpacity();
    look.baseline = trace.shownBaseline();
    look.curved = trace.isCurved();
    if (trace.style() == Trace::Bars)
        look.loneBar = trace.barNeighbours();
    return look;
}

} // namespace

/*!
    \qmltype Trace
    \inqmlmodule graph_kit
    \inherits GraphPlot
    \brief A plot with its data: values written in the document, any data object, or an address on the bus.

    \image five-lines.png The trace below in a chart

    \code
    Trace { name: "Level"; values: [1, 5, 3, 8, 2]; interval: 0.5; unit: "V" }
    \endcode

    The line runs on to the edges of the view where samples lie outside of it, and straight over pixel columns
    into which none falls. NaN leaves a gap, a sample without neighbours is a dot. Where many samples share a
    pixel column the line covers them all, from the smallest to the largest. What is drawn follows style, color
    and lineWidth; the properties of GraphPlot for its own styles have no effect.

    Data comes from the first of series, address and values that is given; two of them at once are a warning
    in the category \c graph.kit.

    \qmlproperty bool Trace::antialiasing
    Whether edges are smoothed, false by default. Smoothed lines through noise cost many times as much.
*/
Trace::Trace(QQuickItem *parent)
    : GraphPlot(parent)
    , m_source(std::make_unique<TraceSource>(this))
{
    setRenderTarget(Image);
    connect(this, SIGNAL(penColorChanged(QColor)), this, SLOT(handlePenColor()));
}

Trace::~Trace() = default;

void Trace::classBegin()
{
    m_source->begin();
    GraphPlot::classBegin();
}

void Trace::componentComplete()
{
    GraphPlot::componentComplete();
    m_source->complete();
    tellOfPlaceLater(this);
}

QVariant Trace::values() const
{
    return QVariant::fromValue(m_source->values());
}

void Trace::setValues(const QVariant &values)
{
    m_hasDates = beginsWithDate(values);
    if (m_source->setValues(numberListOf(this, "values", values)))
        emit valuesChanged();
}

void Trace::setValues(const QVector<double> &values)
{
    m_hasDates = false;
    if (m_source->setValues(values))
        emit valuesChanged();
}

bool Trace::hasValues() const
{
    return m_source->hasValues();
}

double Trace::interval() const
{
    return m_source->interval();
}

void Trace::setInterval(double interval)
{
    if (m_source->setInterval(interval))
        emit intervalChanged();
}

double Trace::start() const
{
    return m_source->start();
}

void Trace::setStart(double start)
{
    if (m_source->setStart(start))
        emit startChanged();
}

void Trace::setStart(const QVariant &start)
{
    if (const auto x = numberOf(this, "start", start))
        setStart(*x);
}

QVariant Trace::positions() const
{
    return QVariant::fromValue(m_source->positions());
}

void Trace::setPositions(const QVariant &positions)
{
    if (m_source->setPositions(numberListOf(this, "positions", positions)))
        emit positionsChanged();
}

void Trace::setPositions(const QVector<double> &positions)
{
    if (m_source->setPositions(positions))
        emit positionsChanged();
}

bool Trace::hasPositions() const
{
    return m_source->hasPositions();
}

PlotData *Trace::series() const
{
    return m_source->series();
}

void Trace::useSeries(PlotData *series)
{
    if (m_source->setSeries(series))
        emit seriesChanged();
}

QString Trace::address() const
{
    return m_source->address();
}

void Trace::setAddress(const QString &address)
{
    if (m_source->setAddress(address))
        emit addressChanged();
}

bool Trace::hasWrittenAddress() const
{
    return m_source->hasAddress();
}

QString Trace::name() const
{
    return m_source->name();
}

void Trace::setName(const QString &name)
{
    if (m_source->setName(name))
        emit nameChanged();
}

QString Trace::unit() const
{
    return m_source->unit();
}

void Trace::setUnit(const QString &unit)
{
    if (!m_source->setUnit(unit))
        return;
    update();
    emit unitChanged();
}

/*!
    \qmlproperty color Trace::color
    The colour of the line, the bars or the dots. A chart gives each trace without one the next colour of its
    theme; elsewhere it is black.
*/
void Trace::setColor(const QColor &color)
{
    m_hasOwnColor = true;
    applyColor(color);
}

void Trace::resetColor()
{
    m_hasOwnColor = false;
    applyColor(m_defaultColor);
}

void Trace::setDefaultColor(const QColor &color)
{
    m_defaultColor = color;
    if (!m_hasOwnColor)
        applyColor(color);
}

void Trace::applyColor(const QColor &color)
{
    m_isChoosingColor = true;
    setPenColor(color);
    m_isChoosingColor = false;
}

void Trace::handlePenColor()
{
    // A pen colour that the document sets is its choice as well.
    if (!m_isChoosingColor)
        m_hasOwnColor = true;
    update();
    emit colorChanged();
}

/*!
    \qmlproperty int Trace::lineWidth
    The width of the line in pixels, from 1 to 64; others count as the nearest of these, with a line in the category
    \c graph.kit, as all limits of numbers do. A chart's theme chooses it where the document does not; 2
    elsewhere. Dots grow with it.
*/
void Trace::setLineWidth(int width)
{
    m_hasOwnLineWidth = true;
    if (!store(m_lineWidth, bounded(this, "lineWidth", width, 1, TraceStrokes::widestLine)))
        return;
    update();
    emit lineWidthChanged();
}

void Trace::resetLineWidth()
{
    setLineWidth(m_defaultLineWidth);
    m_hasOwnLineWidth = false;
}

void Trace::setDefaultLineWidth(int width)
{
    m_defaultLineWidth = width;
    if (!m_hasOwnLineWidth)
        resetLineWidth();
}

/*!
    \qmlproperty enumeration Trace::style
    Trace.Line (default); Trace.Area, which also fills what lies between line and baseline; Trace.Steps, which
    keeps each value until the next; Trace.Bars from the baseline, three quarters as wide as the distance to the nearest
    sample; lineWidth does not count; Trace.Points; Trace.LineAndPoints.

    The baseline is that of axisY, 0 unless it is written, and autoRange includes it for areas and bars, so that their
    lengths are in the ratio of the values. They begin at the lower end of the range instead on a logarithmic axis that cannot
    show the baseline, and where none is written for levels above a reference, in dBm, dBV and all other units
    that begin with dB but dB itself.
*/
void Trace::setStyle(Style style)
{
    if (!store(m_style, bounded(this, "style", style, Line, LineAndPoints)))
        return;
    update();
    emit styleChanged();
}

/*!
    \qmlproperty bool Trace::curved
    Whether the line through samples that lie apart is a curve instead of straight pieces; false by default. The
    curve goes through each sample, and between two of them neither higher nor lower than both. For the styles
    Line, Area and LineAndPoints. Where several samples share a pixel column the line is the same either way.
    (\c smooth is a property of all items, of pictures that are scaled, and does nothing to a line.)
*/
void Trace::setCurved(bool curved)
{
    if (!store(m_curved, curved))
        return;
    update();
    emit curvedChanged();
}

/*!
    \qmlproperty bool Trace::readings
    Whether cursors and the legend of a Chart write its values, and cursors stop at its samples; true by default. Without
    readings a trace is a background for the others, as older sweeps are, of which the cursor keeps clear.
*/
void Trace::setReadings(bool on)
{
    if (!store(m_hasReadings, on))
        return;
    emit readingsChanged();
}

/*!
    \qmlproperty real Trace::fillOpacity
    The opacity of an area, from 0 to 1; 0.25 by default.
*/
void Trace::setFillOpacity(double opacity)
{
    if (!store(m_fillOpacity, bounded(this, "fillOpacity", opacity, 0.0, 1.0)))
        return;
    update();
    emit fillOpacityChanged();
}

DataExtent Trace::dataExtent() const
{
    if (!plotData())
        return {};
    const DataExtent extent = graph::dataExtent(*plotData());
    const bool isLogarithmic = axisX() && axisX()->scaleKind() == ScaleKind::Logarithmic;
    return m_style == Bars ? withHalfBars(extent, *plotData(), barNeighbours(), isLogarithmic) : extent;
}

void Trace::setBarNeighbours(const BarNeighbours &neighbours)
{
    if (store(m_barNeighbours, neighbours))
        update();
}

BarNeighbours Trace::barNeighbours() const
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    const PlotData *data = plotData();
    const SampleSpan samples =
        data && data->size() == 1 ? data->sampleSpan(-infinity, infinity) : SampleSpan();
    if (samples.isEmpty())
        return {};
    const double interval = samples.isEquallySpaced() ? std::abs(samples.interval()) : 0.0;
    const bool hasInterval = interval > 0.0 && (interval != 1.0 || m_source->hasInterval());
    const bool hasNeighbours = !(m_barNeighbours == BarNeighbours());
    if (interval > 0.0 && (hasInterval || !hasNeighbours))
        return {samples.x(0) - interval, samples.x(0) + interval};
    return m_barNeighbours;
}

MinMax Trace::extentX() const
{
    if (!plotData())
        return {};
    return m_style == Bars ? dataExtent().x : graph::extentX(*plotData());
}

DataExtent Trace::dataExtent(double xMin, double xMax) const
{
    return plotData() ? graph::dataExtent(*plotData(), xMin, xMax) : DataExtent();
}

// Of levels, unless the document says where they begin.
bool Trace::hasNoBaseline() const
{
    if (axisY() && axisY()->hasWrittenBaseline())
        return false;
    const QString unit = unitOfValues(*this);
    return AxisUnit::isOfLevels(unit.isEmpty() && axisY() ? axisY()->unit() : unit);
}

bool Trace::beginsAtBaseline() const
{
    return (m_style == Area || m_style == Bars) && axisY() && !hasNoBaseline();
}

int Trace::reach() const
{
    return m_style == Points || m_style == LineAndPoints ? TraceStrokes::reachOfDots(m_lineWidth) : 0;
}

double Trace::shownBaseline() const
{
    if (hasNoBaseline())
        return std::min(minVisibleY(), maxVisibleY());
    // Data that several plots show know one of their axes only.
    return axisY() ? axisY()->baseline() : baseline();
}

/*!
    \qmlsignal Trace::dataChanged()
    After each change of the samples, once for all changes that are made together.
*/
void Trace::handlePlotChanged()
{
    GraphPlot::handlePlotChanged();
    emit dataChanged();
}

void Trace::paintPlot(const PlotFrame &frame)
{
    PainterCanvas canvas(frame.painter);
    draw(canvas, frame.mapping, frame.visibleRect);
}

// The fill of an area is translucent. A thin line of few samples is the engine's own, whose pixels depend on the
// picture's edges; one of many is rectangles.
bool Trace::paintsStrokesOnly() const
{
    const bool hasKnownPixels = m_lineWidth >= 2 || (plotData() && plotData()->size() > width());
    return m_style != Area && hasKnownPixels && penColor().alpha() == 255;
}

void Trace::draw(TraceCanvas &canvas, const PixelMapping &mapping, const QRectF &visible) const
{
    const PlotData *data = plotData();
    if (!data)
        return;
    const SampleSpan samples = data->sampleSpan(visible);
    if (data->usePointsAsSegments()) {
        TraceStrokes::paintSegments(canvas, lookOf(*this), mapping, samples);
        return;
    }
    const SampleSpan drawn = m_curved ? withCurveNeighbours(samples, mapping) : samples.withNeighbours();
    TraceStrokes(lookOf(*this), mapping, inOrderOfColumns(drawn)).paint(canvas);
}

// Where a graphics processor draws, the trace is geometry: a painted item would be a layer of the item's
// size, uploaded with each change. The painter stays for smoothed edges, and for wide translucent lines, whose
// strips overlap.
bool Trace::takesGeometry() const
{
    const QSGRendererInterface *renderer = window() ? window()->rendererInterface() : nullptr;
    const auto api = renderer ? renderer->graphicsApi() : QSGRendererInterface::Unknown;
    const bool isWide = m_lineWidth > TraceStrokes::widestOnColumns && penColor().alpha() < 255;
    return !antialiasing() && !isWide && api != QSGRendererInterface::Unknown &&
           api != QSGRendererInterface::Software;
}

// Geometry has no texture that an effect could read, but what is a layer provides its own, as any item does: that is
// the answer of the item, not that of the painted one.
bool Trace::isTextureProvider() const
{
    // NOLINTNEXTLINE(bugprone-parent-virtual-call)
    return m_isPainted ? GraphPlot::isTextureProvider() : QQuickItem::isTextureProvider();
}

QSGTextureProvider *Trace::textureProvider() const
{
    // NOLINTNEXTLINE(bugprone-parent-virtual-call)
    return m_isPainted ? GraphPlot::textureProvider() : QQuickItem::textureProvider();
}

QSGNode *Trace::updatePaintNode(QSGNode *node, UpdatePaintNodeData *data)
{
    const bool wasPainted = std::exchange(m_isPainted, !takesGeometry());
    if (wasPainted != m_isPainted) {
        delete node;
        node = nullptr;
    }
    if (m_isPainted)
        return GraphPlot::updatePaintNode(node, data);
    auto *own = static_cast<TriangleNode *>(node);
    if (!own)
        own = new TriangleNode;
    TraceMesh mesh(*own);
    const PixelMapping mapping = pixelMapping();
    own->begin(QSizeF(width(), height()));
    if (isPaintable(mapping))
        draw(mesh, mapping, visibleRect());
    own->end();
    return own;
}

} // namespace graph
