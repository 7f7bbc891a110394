#include "kit/plots/Trace.h"

#include "axis/ValueAxis.h"
#include "data/PlotSeries.h"
#include "kit/data/NumberList.h"
#include "kit/data/ServedPlace.h"
#include "kit/data/Store.h"
#include "kit/data/Telling.h"
#include "kit/plots/PainterCanvas.h"
#include "kit/plots/PlotPlace.h"
#include "kit/plots/CurvedLine.h"
#include "kit/plots/TracePoints.h"
#include "kit/plots/TraceMesh.h"
#include "kit/plots/TraceNode.h"
#include "kit/plots/TraceStrokes.h"

#include <QQuickWindow>
#include <QSGRendererInterface>

namespace graph {

namespace {

TraceLook lookOf(const Trace &trace)
{
    TraceLook look;
    look.style = static_cast<TraceLook::Style>(trace.style());
    look.color = trace.penColor();
    look.lineWidth = trace.lineWidth();
    look.fillOpacity = trace.fillOpacity();
    look.baseline = trace.baseline();
    look.curved = trace.isCurved();
    return look;
}

} // namespace

/*!
    \qmltype Trace
    \inqmlmodule graph_kit
    \inherits GraphPlot
    \brief A plot with its data: values written in the document, any data object, or an address on the bus.

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
{
    setRenderTarget(Image);
    connect(this, SIGNAL(penColorChanged(QColor)), this, SLOT(handlePenColor()));
}

Trace::~Trace() = default;

void Trace::classBegin()
{
    m_isComplete = false;
    GraphPlot::classBegin();
}

void Trace::componentComplete()
{
    GraphPlot::componentComplete();
    m_isComplete = true;
    applySource();
    tellOfPlaceLater(this);
}

/*!
    \qmlproperty list<real> Trace::values
    The values: an array, a typed array, or a list property of a C++ object. What is no number leaves a gap.
    Empty by default.
*/
void Trace::setValues(const QVariant &values)
{
    const auto numbers = numberListOf(this, "values", values);
    m_hasValues = numbers.has_value();
    m_values = numbers.value_or(QVector<double>());
    applySource();
    emit valuesChanged();
}

void Trace::setValues(const QVector<double> &values)
{
    m_hasValues = true;
    m_values = values;
    applySource();
    emit valuesChanged();
}

/*!
    \qmlproperty real Trace::interval
    The distance in x from one value to the next; 1 by default, negative ones run backwards. Of values, and of
    those of an address: these have what the service says (its item \c xIncrement) unless an interval is written.
*/
void Trace::setInterval(double interval)
{
    const bool isFirst = !std::exchange(m_hasInterval, true);
    if (!store(m_interval, interval) && !isFirst)
        return;
    applySource();
    emit intervalChanged();
}

/*!
    \qmlproperty real Trace::start
    The x of the first value, 0 by default. Of values, and of those of an address: these have what the service says
    (its item \c xFirsValue) unless a start is written.
*/
void Trace::setStart(double start)
{
    const bool isFirst = !std::exchange(m_hasStart, true);
    if (!store(m_start, start) && !isFirst)
        return;
    applySource();
    emit startChanged();
}

/*!
    \qmlproperty list<real> Trace::positions
    An x for each value, in any order, in place of start and interval; a list like values. The shorter of the
    two lists counts. Undefined by default.
*/
void Trace::setPositions(const QVariant &positions)
{
    const auto numbers = numberListOf(this, "positions", positions);
    m_hasPositions = numbers.has_value();
    m_positions = numbers.value_or(QVector<double>());
    applySource();
    emit positionsChanged();
}

void Trace::setPositions(const QVector<double> &positions)
{
    m_hasPositions = true;
    m_positions = positions;
    applySource();
    emit positionsChanged();
}

/*!
    \qmlproperty PlotData Trace::series
    A data object of any kind, null by default. What it says of itself, such as its units, stays as it is;
    only where it has no unit it takes that of the trace.
*/
void Trace::setSeries(PlotData *series)
{
    if (m_series == series)
        return;
    if (m_series)
        disconnect(m_series, SIGNAL(destroyed()), this, SLOT(applySource()));
    m_series = series;
    // Later than the plot's own connection, which lets go of the data that the plot has then.
    if (series)
        connect(series, SIGNAL(destroyed()), this, SLOT(applySource()), Qt::QueuedConnection);
    applySource();
    emit seriesChanged();
}

/*!
    \qmlproperty string Trace::address
    Where the values come from on the bus: the name of a service, a comma and the prefix of its items, as for
    PlotData::dbusAddress. The service also says where the values are in x, which units they have and what they are
    called, as far as the document does not: interval and start, unit, name. Empty by default.
*/
void Trace::setAddress(const QString &address)
{
    m_hasAddress = true;
    if (m_address == address)
        return;
    m_address = address;
    applySource();
    emit addressChanged();
}

/*!
    \qmlproperty string Trace::name
    What a legend and a reading call the trace; empty by default.
*/
void Trace::setName(const QString &name)
{
    if (!store(m_name, name))
        return;
    if (m_own)
        m_own->setLabel(name);
    emit nameChanged();
}

/*!
    \qmlproperty string Trace::unit
    The unit of the values, such as "V"; empty by default, and then that of the service where there is an address.
*/
void Trace::setUnit(const QString &unit)
{
    if (!store(m_unit, unit))
        return;
    if (plotData())
        describe(plotData());
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
    keeps each value until the next; Trace.Bars from the baseline; Trace.Points; Trace.LineAndPoints.
*/
void Trace::setStyle(Style style)
{
    if (!store(m_style, style))
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

// The first and the last bar are as wide as the others.
void Trace::addHalfBars(DataExtent *extent) const
{
    const SampleSpan samples = plotData()->sampleSpan(extent->x.min, extent->x.max);
    const int size = samples.size();
    if (size < 2)
        return;
    const double first = std::abs(samples.x(1) - samples.x(0)) / 2.0;
    const double last = std::abs(samples.x(size - 1) - samples.x(size - 2)) / 2.0;
    const bool isLogarithmic = axisX() && axisX()->scaleKind() == ScaleKind::Logarithmic;
    if (!isLogarithmic || extent->x.min > first)
        extent->x.min -= first;
    extent->x.max += last;
}

DataExtent Trace::dataExtent() const
{
    if (!plotData())
        return {};
    DataExtent extent = graph::dataExtent(*plotData());
    if (m_style == Bars)
        addHalfBars(&extent);
    return extent;
}

DataExtent Trace::dataExtent(double xMin, double xMax) const
{
    return plotData() ? graph::dataExtent(*plotData(), xMin, xMax) : DataExtent();
}

Trace::Source Trace::source() const
{
    if (m_series)
        return Source::Series;
    if (!m_address.isEmpty())
        return Source::Address;
    return m_hasValues || m_hasPositions ? Source::Values : Source::None;
}

void Trace::warnOfTwoSources()
{
    const int given = int(m_series != nullptr) + int(!m_address.isEmpty()) + int(m_hasValues);
    if (given < 2 || m_hasWarned)
        return;
    m_hasWarned = true;
    const char *used = m_series ? "series" : "address";
    tell(this, QStringLiteral(
                   "is given its data twice: of series, address and values it uses %1; remove the others")
                   .arg(QLatin1String(used)));
}

// The trace's own data object, of that kind and for that address: another one shows nothing of the former service. Axes
// that the former one was given go over to it.
template <typename Data> Data *Trace::ownData(const QString &address)
{
    auto *former = dynamic_cast<Data *>(m_own.data());
    if (former && former->busBinding().writtenAddress() == address)
        return former;
    auto *data = new Data(this);
    if (m_own) {
        data->setAxisX(m_own->axisX());
        data->setAxisY(m_own->axisY());
        m_own->removeEventFilter(this);
        m_own->disconnect(this);
        m_own->deleteLater();
    }
    m_own = data;
    data->setLabel(m_name);
    if (!address.isEmpty()) {
        data->setDbusAddress(address);
        data->installEventFilter(this);
        connect(data, &PlotData::yUnitsChanged, this, [this] { describe(m_own); });
    }
    return data;
}

void Trace::applySource()
{
    if (!m_isComplete)
        return;
    warnOfTwoSources();
    const Source from = source();
    if (from == Source::Series) {
        describe(m_series);
        setPlotData(m_series);
        return;
    }
    if (from == Source::None) {
        if (m_own && plotData() == m_own)
            setPlotData(nullptr);
        return;
    }
    if (from == Source::Values && m_hasPositions) {
        ownData<TracePoints>()->setCoordinates(m_positions, m_values);
    } else {
        const bool isServed = from == Source::Address;
        auto *data = ownData<PlotSeries>(isServed ? m_address : QString());
        if (!isServed)
            data->setYData(m_values);
        data->setXInterval(isServed && !m_hasInterval ? servedInterval(*data, m_interval) : m_interval);
        data->setXFirstValue(isServed && !m_hasStart ? servedStart(*data, m_start) : m_start);
    }
    describe(m_own);
    setPlotData(m_own);
}

// The service has said where its values are.
bool Trace::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_own && event->type() == QEvent::DynamicPropertyChange)
        applySource();
    return GraphPlot::eventFilter(watched, event);
}

// What the document writes counts, then what the data say of themselves.
void Trace::describe(PlotData *data)
{
    if (m_isDescribing || (data != m_own && !data->yUnits().isEmpty()))
        return;
    const QString served = data->busBinding().value(QStringLiteral("yUnits")).toString();
    m_isDescribing = true;
    data->setYUnits(m_unit.isEmpty() ? served : m_unit);
    m_isDescribing = false;
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

// The fill of an area is translucent.
bool Trace::paintsStrokesOnly() const
{
    return m_style != Area && m_lineWidth >= 2 && penColor().alpha() == 255;
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

// Geometry has no texture that an effect could read; what is a layer provides its own.
bool Trace::isTextureProvider() const
{
    return m_isPainted ? GraphPlot::isTextureProvider() : QQuickItem::isTextureProvider();
}

QSGTextureProvider *Trace::textureProvider() const
{
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
    auto *own = static_cast<TraceNode *>(node);
    if (!own)
        own = new TraceNode;
    TraceMesh mesh;
    const PixelMapping mapping = pixelMapping();
    if (isPaintable(mapping))
        draw(mesh, mapping, visibleRect());
    own->show(mesh, QSizeF(width(), height()));
    return own;
}

} // namespace graph
