#include "kit/plots/LimitLine.h"

#include "axis/ValueAxis.h"
#include "kit/data/NumberList.h"
#include "kit/data/Store.h"
#include "kit/data/Telling.h"
#include "kit/plots/PainterCanvas.h"
#include "kit/plots/PlotPlace.h"
#include "kit/plots/TraceStrokes.h"

#include <QMetaMethod>
#include <QPainter>

#include <cmath>

namespace graph {

namespace {

constexpr double aroundItem = 16.0; // pixels
constexpr double farthest = std::numeric_limits<double>::max();

bool isNumber(const QVariant &value)
{
    const int type = value.userType();
    return type == QMetaType::Int || type == QMetaType::Double || type == QMetaType::Float;
}

} // namespace

/*!
    \qmltype LimitLine
    \inqmlmodule graph_kit
    \inherits GraphPlot
    \brief A line that samples are not to cross, and whether they do.

    \image limit.png A limit, what it forbids, and how far a trace is from it

    \code
    LimitLine { positions: [20, 1000, 20000]; values: [-40, -20, -40]; series: spectrum; kind: LimitLine.Upper }
    \endcode

    \qmlproperty list<real> LimitLine::positions
    \qmlproperty list<real> LimitLine::values
    The points of the line in units of the axes, in any order; between them it is straight on the screen, also
    on a logarithmic axis. Beside it there is no limit, nor where a value is NaN; two points at one position
    are a jump. One value without positions, a number or a list of one, holds everywhere. Empty by default.
*/
LimitLine::LimitLine(QQuickItem *parent)
    : GraphPlot(parent)
{
    setRenderTarget(Image);
    setPenColor(QColor(0xe5, 0x48, 0x4d));
    connect(this, SIGNAL(penColorChanged(QColor)), this, SLOT(update()));
    connect(this, SIGNAL(penColorChanged(QColor)), this, SIGNAL(colorChanged()));
    connect(this, SIGNAL(axisXChanged(ValueAxis *)), this, SLOT(followScale(ValueAxis *)));
    connect(this, SIGNAL(axisYChanged(ValueAxis *)), this, SLOT(followScale(ValueAxis *)));
    setPlotData(&m_limit);
}

void LimitLine::componentComplete()
{
    GraphPlot::componentComplete();
    tellOfPlaceLater(this);
}

LimitLine::~LimitLine()
{
    setPlotData(nullptr);
}

void LimitLine::setPositions(const QVariant &positions)
{
    setLimit(numberListOf(this, "positions", positions).value_or(QVector<double>()), m_values);
}

void LimitLine::setValues(const QVariant &values)
{
    setLimit(m_positions, isNumber(values)
                              ? QVector<double>{values.toDouble()}
                              : numberListOf(this, "values", values).value_or(QVector<double>()));
}

void LimitLine::setLimit(const QVector<double> &positions, const QVector<double> &values)
{
    const bool hasMoved = store(m_positions, positions);
    const bool hasOtherValues = store(m_values, values);
    if (!hasMoved && !hasOtherValues)
        return;
    applyLimit();
    if (hasMoved)
        emit positionsChanged();
    if (hasOtherValues)
        emit valuesChanged();
}

void LimitLine::applyLimit()
{
    // A value that holds everywhere has no place of its own, but the plot is to count as one with data.
    if (holdsEverywhere())
        m_limit.setCoordinates({std::numeric_limits<double>::quiet_NaN()}, m_values);
    else
        m_limit.setCoordinates(m_positions, m_values);
    judge();
}

/*!
    \qmlproperty enumeration LimitLine::kind
    LimitLine.Upper (default) or LimitLine.Lower.
*/
void LimitLine::setKind(Kind kind)
{
    if (!store(m_kind, bounded(this, "kind", kind, Upper, Lower)))
        return;
    update();
    emit kindChanged();
    judge();
}

/*!
    \qmlproperty PlotData LimitLine::series
    A Trace or another plot, or any data, which is compared with the limit at each change; null by default.

    \qmlproperty bool LimitLine::passed
    \readonly
    Whether no sample is beyond the limit; false while none has been compared.

    \qmlproperty real LimitLine::margin
    \readonly
    The least distance of a sample from the limit, in units of y, negative beyond it; NaN while none has been
    compared.

    \qmlproperty real LimitLine::worstAt
    \readonly
    The x of that sample; NaN without one.
*/
bool LimitLine::isAsked() const
{
    return isSignalConnected(QMetaMethod::fromSignal(&LimitLine::verdictChanged));
}

/*!
    \qmlproperty PlotData LimitLine::plotData
    The points of the line, which positions and values give. Another one is ignored, with a line in the category
    \c graph.kit.
*/
void LimitLine::refuseData(PlotData *data)
{
    if (data && data != plotData())
        tellOnce(this, "plotData",
                 QStringLiteral("draws its positions and values, and ignores its plotData: "
                                "write those, and as series what is compared with them"));
}

void LimitLine::useSeries(PlotData *series)
{
    if (m_series == series)
        return;
    if (m_series)
        disconnect(m_series, nullptr, this, SLOT(judge()));
    m_series = series;
    if (series) {
        connect(series, SIGNAL(plotChanged()), this, SLOT(judge()));
        connect(series, SIGNAL(destroyed()), this, SLOT(judge()));
    }
    emit seriesChanged();
    judge();
}

void LimitLine::followScale(ValueAxis *axis)
{
    if (axis)
        connect(axis, SIGNAL(axisChanged()), this, SLOT(judge()), Qt::UniqueConnection);
    judge();
}

LimitScales LimitLine::scales() const
{
    return {axisX() ? axisX()->scaleKind() : ScaleKind::Linear,
            axisY() ? axisY()->scaleKind() : ScaleKind::Linear};
}

QVector<QPointF> LimitLine::limitOver(double xMin, double xMax) const
{
    if (holdsEverywhere())
        return {{xMin, m_values.first()}, {xMax, m_values.first()}};
    return m_limit.sampleSpan(-farthest, farthest).toVector();
}

void LimitLine::judge()
{
    LimitVerdict verdict;
    if (m_series && !m_values.isEmpty()) {
        const SampleSpan all = m_series->sampleSpan(-farthest, farthest);
        const QVector<QPointF> limit = limitOver(all.first().x(), all.last().x());
        if (!all.isEmpty() && !m_series->usePointsAsSegments())
            verdict = checkLimit(limit, m_kind == Upper ? LimitSide::Upper : LimitSide::Lower, all, scales());
    }
    const auto isSame = [](double a, double b) { return a == b || (std::isnan(a) && std::isnan(b)); };
    if (isSame(verdict.margin, m_verdict.margin) && isSame(verdict.worstAt, m_verdict.worstAt))
        return;
    m_verdict = verdict;
    emit verdictChanged();
}

/*!
    \qmlproperty string LimitLine::name
    What a legend calls the line; empty by default.
*/
void LimitLine::setName(const QString &name)
{
    if (m_limit.label() == name)
        return;
    m_limit.setLabel(name);
    emit nameChanged();
}

/*!
    \qmlproperty color LimitLine::color
    The colour of the line, a red by default.

    \qmlproperty int LimitLine::lineWidth
    The width of the line in pixels, from 1 to 64; 2 by default.
*/
void LimitLine::setLineWidth(int width)
{
    if (!store(m_lineWidth, bounded(this, "lineWidth", width, 1, TraceStrokes::widestLine)))
        return;
    update();
    emit lineWidthChanged();
}

/*!
    \qmlproperty real LimitLine::fillOpacity
    The opacity, from 0 to 1, of what is beyond the limit; 0.12 by default.
*/
void LimitLine::setFillOpacity(double opacity)
{
    if (!store(m_fillOpacity, bounded(this, "fillOpacity", opacity, 0.0, 1.0)))
        return;
    update();
    emit fillOpacityChanged();
}

DataExtent LimitLine::dataExtent() const
{
    return dataExtent(-farthest, farthest);
}

DataExtent LimitLine::dataExtent(double xMin, double xMax) const
{
    if (!holdsEverywhere())
        return graph::dataExtent(m_limit, xMin, xMax);
    DataExtent extent;
    if (std::isfinite(m_values.first()))
        extent.y.add({m_values.first(), m_values.first()});
    return extent;
}

void LimitLine::paintPlot(const PlotFrame &frame)
{
    SampleSpan samples;
    if (holdsEverywhere()) {
        // Beyond the item, so that its outer columns are covered.
        const auto [left, right] = std::minmax(
            {frame.mapping.valueX(-aroundItem), frame.mapping.valueX(frame.mapping.width() + aroundItem)});
        samples = SampleSpan(limitOver(left, right));
    } else {
        samples = m_limit.sampleSpan(frame.visibleRect).withNeighbours();
    }
    TraceLook look;
    look.style = TraceLook::Area;
    look.color = penColor();
    look.lineWidth = m_lineWidth;
    look.fillOpacity = m_fillOpacity;
    look.fill = m_kind == Upper ? TraceLook::ToTop : TraceLook::ToBottom;
    PainterCanvas canvas(frame.painter);
    TraceStrokes(look, frame.mapping, inOrderOfColumns(samples)).paint(canvas);
}

} // namespace graph
