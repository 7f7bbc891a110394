#include "kit/chart/LegendPlace.h"

#include "data/PlotData.h"
#include "kit/chart/DataChecks.h"
#include "kit/plots/Trace.h"
#include "plots/GraphPlot.h"

#include <QRectF>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace graph {

namespace {

constexpr double inset = 4.0; // of a legend, in pixels
constexpr double gap = 3.0;   // to a trace
constexpr double sliceWidth = 8.0;
constexpr int settling = 500; // of data, in milliseconds

// The rows of a stretch of pixel columns that a trace passes.
struct Rows
{
    double top = std::numeric_limits<double>::infinity();
    double bottom = -std::numeric_limits<double>::infinity();

    void add(double row)
    {
        // NaN adds nothing.
        top = row < top ? row : top;
        bottom = row > bottom ? row : bottom;
    }
};

// Of the line between the samples before and behind that place.
double rowAt(const AbstractPlot &plot, const SampleSpan &samples, double x)
{
    const int next = samples.countBelow(x);
    if (next == 0 || next >= samples.size())
        return std::numeric_limits<double>::quiet_NaN();
    const double left = plot.mapToItemX(samples.x(next - 1));
    const double right = plot.mapToItemX(samples.x(next));
    const double part = right != left ? (plot.mapToItemX(x) - left) / (right - left) : 0.0;
    const double before = plot.mapToItemY(samples.y(next - 1));
    return before + part * (plot.mapToItemY(samples.y(next)) - before);
}

Rows rowsBetween(const AbstractPlot &plot, const SampleSpan &samples, double left, double right)
{
    Rows rows;
    double from = plot.mapFromItemX(left);
    double to = plot.mapFromItemX(right);
    if (from > to)
        std::swap(from, to);
    // A bar is on both sides of its sample.
    const auto *trace = qobject_cast<const Trace *>(&plot);
    const bool hasBars = trace && trace->style() == Trace::Bars && samples.size() > 1;
    const double half = hasBars ? std::abs(samples.x(1) - samples.x(0)) / 2.0 : 0.0;
    from -= half;
    to += half;
    const int first = samples.countBelow(from);
    const int end = std::max(first, samples.countUpTo(to, first));
    const MinMax extent = samples.minMax(first, end);
    if (!extent.isEmpty()) {
        rows.add(plot.mapToItemY(extent.min));
        rows.add(plot.mapToItemY(extent.max));
    }
    rows.add(rowAt(plot, samples, from));
    rows.add(rowAt(plot, samples, to));
    if (rows.top <= rows.bottom && reachesBaseline(plot))
        rows.add(plot.mapToItemY(shownBaseline(plot)));
    return rows;
}

bool isCovered(const AbstractPlot &plot, const QRectF &place)
{
    constexpr double farthest = std::numeric_limits<double>::infinity();
    const SampleSpan samples = plot.plotData()->sampleSpan(-farthest, farthest);
    if (samples.isEmpty() || !plot.axisX() || !plot.axisY())
        return false;
    for (double left = place.left(); left < place.right(); left += sliceWidth) {
        const Rows rows = rowsBetween(plot, samples, left, std::min(left + sliceWidth, place.right()));
        if (rows.top <= place.bottom() && rows.bottom >= place.top())
            return true;
    }
    return false;
}

// What is hidden by a tap on the legend is among them: it does not move the legend.
QVector<const AbstractPlot *> tracesWithData(const QVector<QPointer<AbstractPlot>> &plots)
{
    QVector<const AbstractPlot *> traces;
    for (const AbstractPlot *plot : plots) {
        if (qobject_cast<const GraphPlot *>(plot) && plot->plotData() && plot->plotData()->size() > 0)
            traces.append(plot);
    }
    return traces;
}

// Of a legend in that corner, with the gap around it.
QRectF placeIn(const LegendPlace::Corner &corner, const QSizeF &area, const QSizeF &legend)
{
    const double x = corner.atRight ? area.width() - legend.width() - inset : inset;
    const double y = corner.atBottom ? area.height() - legend.height() - inset : inset;
    return QRectF(QPointF(x, y), legend).adjusted(-gap, -gap, gap, gap);
}

bool isFree(const QRectF &place, const QVector<const AbstractPlot *> &traces)
{
    return std::none_of(traces.begin(), traces.end(),
                        [&place](const AbstractPlot *plot) { return isCovered(*plot, place); });
}

} // namespace

LegendPlace::LegendPlace()
{
    m_settling.setSingleShot(true);
    m_settling.setInterval(settling);
    connect(&m_settling, &QTimer::timeout, this, [this] {
        m_isDue = m_hasSettled = true;
        emit due();
    });
}

bool LegendPlace::isNew(const QVector<const void *> &data, const Rooms &rooms)
{
    const bool isOther = data != m_data;
    if (isOther)
        m_hasSettled = false;
    if (!m_hasSettled)
        m_settling.start();
    const bool wasDue = std::exchange(m_isDue, false);
    const bool isOutside = !m_data.isEmpty() && !m_corner;
    const bool hasOtherRooms = isOutside ? rooms.chart != m_rooms.chart : !(rooms == m_rooms);
    if (!isOther && !wasDue && !hasOtherRooms)
        return false;
    m_data = data;
    m_rooms = rooms;
    return true;
}

bool LegendPlace::find(const QVector<QPointer<AbstractPlot>> &plots, const Rooms &rooms)
{
    const QVector<const AbstractPlot *> traces = tracesWithData(plots);
    QVector<const void *> data;
    for (const AbstractPlot *plot : traces)
        data.append(plot->plotData());
    if (data.isEmpty() || rooms.legend.isEmpty() || !isNew(data, rooms))
        return false;
    m_corner.reset();
    for (const Corner corner :
         {Corner{true, false}, Corner{false, false}, Corner{true, true}, Corner{false, true}}) {
        if (!m_corner && isFree(placeIn(corner, rooms.area, rooms.legend), traces))
            m_corner = corner;
    }
    return true;
}

} // namespace graph
