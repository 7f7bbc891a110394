#include "kit/chart/FittedAxis.h"

#include "data/PlotData.h"
#include "kit/axis/ChartAxis.h"
#include "kit/chart/PlottedData.h"
#include "kit/plots/LimitLine.h"
#include "kit/plots/PlotUnits.h"
#include "kit/plots/Trace.h"
#include "kit/plots/WaterfallPlot.h"
#include "view/base/AbstractPlot.h"

#include <algorithm>
#include <cmath>

namespace graph {

namespace {

// No reader sees the ends cross, unless they are to.
void write(ValueAxis *axis, const Span &full)
{
    if (!full.isFinite())
        return;
    if (full.from < axis->maxValue()) {
        axis->setMinValue(full.from);
        axis->setMaxValue(full.to);
    } else {
        axis->setMaxValue(full.to);
        axis->setMinValue(full.from);
    }
}

// A baseline that is out of all proportion to the data is there to be out of sight, as that of shades is which are as
// high as the plot area.
bool canShow(const ValueAxis &axis, double baseline, const Span &data)
{
    constexpr double farAway = 1000.0;
    const double size = std::max(std::abs(data.from), std::abs(data.to));
    const bool hasPlace = axis.scaleKind() == ScaleKind::Linear || baseline > 0.0;
    return hasPlace && std::isfinite(baseline) && std::abs(baseline) <= size * farAway;
}

bool hasPlaceFor(const ValueAxis &axis, const Span &span)
{
    return axis.scaleKind() == ScaleKind::Linear || span.ordered().from > 0.0;
}

// The part of it for which there is a place on the axis, whose full range is known.
Span placed(const ValueAxis &axis, const Span &shown, const Span &full)
{
    const Span whole = full.ordered();
    if (hasPlaceFor(axis, shown) || !hasPlaceFor(axis, whole))
        return shown;
    return {whole.from, std::max(whole.from, shown.to)};
}

// Empty where the plot has nothing to say about the axis.
QString unitOf(const AbstractPlot *plot, const ValueAxis *axis)
{
    if (!plot)
        return {};
    if (plot->axisX() == axis)
        return unitOfPositions(*plot);
    // The unit of a waterfall is that of its colours.
    return plot->axisY() == axis && !qobject_cast<const WaterfallPlot *>(plot) ? unitOfValues(*plot)
                                                                               : QString();
}

// As a legend has it.
QString nameOfTrace(const AbstractPlot *plot)
{
    const auto *trace = qobject_cast<const Trace *>(plot);
    if (trace && !trace->name().isEmpty())
        return trace->name();
    return plot && plot->plotData() ? plot->plotData()->label() : QString();
}

} // namespace

FittedAxis::FittedAxis(ValueAxis *axis, bool isOwn)
    : m_axis(axis)
    , m_base{axis->minValue(), axis->maxValue()}
    , m_isOwn(isOwn)
{
    auto *chartAxis = qobject_cast<ChartAxis *>(axis);
    // Of an end that a document writes the other one is not the default.
    const bool isFree = chartAxis && !chartAxis->hasWrittenAutoRange() &&
                        (chartAxis->hasWrittenRange() || m_base == Span{0.0, 1.0});
    if (isFree)
        chartAxis->setAutoRange(ChartAxis::Fit);
}

ValueAxis *FittedAxis::axis() const
{
    return m_axis;
}

bool FittedAxis::fit(const Look &look)
{
    m_isUnsettled = false;
    m_base = fitted(look);
    Span full = m_base;
    const Span shown = look.shown ? placed(*m_axis, *look.shown, full) : Span();
    m_isExtended = look.shown && !full.ordered().contains(shown);
    if (m_isExtended) {
        full = full.ordered().united(shown);
        if (m_base.from > m_base.to)
            std::swap(full.from, full.to);
    }
    write(m_axis, full);
    return m_isUnsettled;
}

void FittedAxis::fitWhileMoved(const Look &look)
{
    auto *axis = qobject_cast<ChartAxis *>(m_axis);
    if (!axis || axis->orientation() == Qt::Horizontal || axis->autoRange() != ChartAxis::FitVisible ||
        look.shown)
        return;
    axis->setFitsWhileMoved(true);
    fit(look);
    axis->setFitsWhileMoved(false);
}

// What the axis makes of its data.
Span FittedAxis::fitted(const Look &look)
{
    if (m_byHand && hasPlaceFor(*m_axis, *m_byHand))
        return *m_byHand;
    auto *axis = qobject_cast<ChartAxis *>(m_axis);
    if (!axis || axis->autoRange() == ChartAxis::Off)
        return m_base;
    const bool onlyVisible = axis->autoRange() == ChartAxis::FitVisible;
    Span data = look.data ? *look.data : look.plotted.along(axis, onlyVisible);
    if (data.isEmpty())
        return m_base;
    if (m_isExtended)
        write(axis, m_base);
    const bool isExact = look.plotted.fill(axis);
    axis->setHeadRoom(!isExact);
    axis->setReach(isExact ? 0.0 : look.reach);
    if (isExact) {
        m_live = {};
        m_lingering = {};
    } else if (axis->orientation() == Qt::Horizontal) {
        if (look.hasRoom)
            data = m_live.withRoom(data, look.now);
        m_isUnsettled = m_live.hasRoom();
    } else {
        data = m_lingering.withPast(data, look.now);
        m_isUnsettled = m_lingering.lingers();
    }
    const double baseline = axis->baseline();
    const bool rests = look.plotted.restOnBaseline(axis) && canShow(*axis, baseline, data);
    if (rests)
        data = data.united({baseline, baseline});
    axis->setRestsOnBaseline(rests);
    const bool needsPositive = axis->scaleKind() == ScaleKind::Logarithmic && data.from <= 0.0;
    axis->setDataExtent(data.from, data.to,
                        needsPositive ? look.plotted.leastPositiveAlong(axis, onlyVisible) : 0.0);
    return {axis->minValue(), axis->maxValue()};
}

void FittedAxis::takeRange()
{
    m_base = {m_axis->minValue(), m_axis->maxValue()};
    m_isExtended = false;
}

bool FittedAxis::moveByHand(double anchor, double factor, double distance)
{
    const Scale full = m_axis->axisRange().fullScale();
    const auto moved = [&](double end) { return full.valueAt(anchor + (end - anchor) * factor + distance); };
    const Span span{moved(0.0), moved(1.0)};
    if (!span.isFinite() || span.length() == 0.0)
        return false;
    m_byHand = span;
    return true;
}

const AbstractPlot *FittedAxis::onlyTrace(const QVector<QPointer<AbstractPlot>> &traces) const
{
    const AbstractPlot *only = nullptr;
    if (!m_axis || m_axis->orientation() == Qt::Horizontal)
        return nullptr;
    for (const AbstractPlot *plot : traces) {
        if (!plot || plot->axisY() != m_axis || qobject_cast<const LimitLine *>(plot))
            continue;
        if (only || qobject_cast<const WaterfallPlot *>(plot))
            return nullptr;
        only = plot;
    }
    return nameOfTrace(only).isEmpty() ? nullptr : only;
}

void FittedAxis::takeTitle(const AbstractPlot *onlyTrace)
{
    auto *axis = qobject_cast<ChartAxis *>(m_axis);
    if (!axis || axis->title() != m_givenTitle)
        return;
    m_givenTitle = nameOfTrace(onlyTrace);
    axis->setTitle(m_givenTitle);
}

void FittedAxis::takeUnit(const QVector<QPointer<AbstractPlot>> &traces)
{
    if (!m_axis || m_axis->unit() != m_givenUnit)
        return;
    for (const AbstractPlot *plot : traces) {
        const QString unit = unitOf(plot, m_axis);
        if (unit.isEmpty())
            continue;
        m_givenUnit = unit;
        m_axis->setUnit(unit);
        return;
    }
}

} // namespace graph
