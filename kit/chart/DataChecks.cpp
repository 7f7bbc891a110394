#include "kit/chart/DataChecks.h"

#include "axis/ValueAxis.h"
#include "data/PlotPoints.h"
#include "data/PlotSeries.h"
#include "kit/axis/ChartAxis.h"
#include "kit/axis/TickPlan.h"
#include "kit/chart/BusChecks.h"
#include "kit/data/Difference.h"
#include "kit/data/ItemName.h"
#include "kit/data/StreamSeries.h"
#include "kit/data/Telling.h"
#include "kit/plots/LimitLine.h"
#include "kit/plots/Trace.h"
#include "kit/plots/WaterfallPlot.h"
#include "plots/GraphPlot.h"
#include "view/zoom/ZoomRect.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace graph {

namespace {

using DataCheck = QString (*)(const AbstractPlot &, const PlotData &);

SampleSpan allSamples(const PlotData &data)
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    return data.sampleSpan(-infinity, infinity);
}

QString withoutNumbers(const AbstractPlot &plot, const PlotData &data)
{
    if (wasTold(&plot, "values"))
        return {};
    // What was measured, or computed, may be gaps only.
    const QString type = typeNameOf(&data);
    if (data.busBinding().client() || data.size() == 0 ||
        (type != QLatin1String("PlotSeries") && type != QLatin1String("PlotPoints")))
        return {};
    for (int i = 0; i < data.size(); ++i) {
        if (!std::isnan(data.y(i)))
            return {};
    }
    return QStringLiteral("has %1 values and no number among them: texts that are no numbers, undefined and "
                          "NaN are gaps; write numbers")
        .arg(data.size());
}

QString placesToWrite(const PlotData &data, bool isOwn)
{
    if (data.inherits("graph::StreamSeries") || (isOwn && data.inherits("PlotSeries")))
        return QStringLiteral("an interval other than 0");
    if (data.inherits("PlotSeries"))
        return QStringLiteral("an xInterval other than 0");
    if (isOwn)
        return QStringLiteral("positions that differ");
    return data.inherits("PlotPoints") ? QStringLiteral("xData, as many as yData")
                                       : QStringLiteral("x that differ");
}

QVector<double> positionsOf(const AbstractPlot &plot)
{
    if (const auto *trace = qobject_cast<const Trace *>(&plot))
        return trace->series() || !trace->hasPositions() ? QVector<double>()
                                                         : trace->positions().value<QVector<double>>();
    const auto *limit = qobject_cast<const LimitLine *>(&plot);
    return limit ? limit->positions().value<QVector<double>>() : QVector<double>();
}

// A value may be missing, but where it is missing is known.
QString withoutPlaces(const AbstractPlot &plot, const PlotData &)
{
    const QVector<double> positions = positionsOf(plot);
    const auto missing =
        std::count_if(positions.begin(), positions.end(), [](double x) { return std::isnan(x); });
    if (missing == 0 || wasTold(&plot, "positions"))
        return {};
    return QStringLiteral(
               "has %1 of %2 positions that are no numbers and no dates, and shows nothing there: write "
               "a number or a valid date for each value")
        .arg(missing)
        .arg(positions.size());
}

QString atOnePlace(const AbstractPlot &plot, const PlotData &data)
{
    if (!hasSamples(data) || data.usePointsAsSegments() || data.size() < 3)
        return {};
    const SampleSpan samples = allSamples(data);
    const double x = samples.first().x();
    if (samples.size() < 3 || samples.last().x() != x)
        return {};
    return QStringLiteral("has all its %1 samples at x = %2: write %3")
        .arg(data.size())
        .arg(x)
        .arg(placesToWrite(data, isOwnData(plot)));
}

QString withoutInterval(const AbstractPlot &plot, const PlotData &data)
{
    const auto *series = qobject_cast<const PlotSeries *>(&data);
    const auto *stream = qobject_cast<const StreamSeries *>(&data);
    if ((!series && !stream) || data.size() == 0)
        return {};
    const double start = series ? series->xFirstValue() : stream->start();
    const double interval = series ? series->xInterval() : stream->interval();
    if (std::isfinite(start) && std::isfinite(interval))
        return {};
    return QStringLiteral(
               "has no places for its %1 values, from %2 on with an interval of %3: write numbers as %4")
        .arg(data.size())
        .arg(start)
        .arg(interval)
        .arg(stream || isOwnData(plot) ? QStringLiteral("start and interval")
                                       : QStringLiteral("xFirstValue and xInterval"));
}

// From 1e16 on there are no odd numbers.
QString withTooSmallSteps(const AbstractPlot &plot, const PlotData &data)
{
    const auto *series = qobject_cast<const PlotSeries *>(&data);
    const auto *stream = qobject_cast<const StreamSeries *>(&data);
    if ((!series && !stream) || data.size() < 2)
        return {};
    const double interval = std::abs(series ? series->xInterval() : stream->interval());
    const SampleSpan samples = allSamples(data);
    const double farthest =
        samples.isEmpty() ? 0.0 : std::max(std::abs(samples.first().x()), std::abs(samples.last().x()));
    const double step = numberStep(farthest);
    if (interval == 0.0 || !(interval < step))
        return {};
    return QStringLiteral(
               "has samples %1 apart at x = %2, where numbers are %3 apart: write a %4 that is nearer "
               "to 0, and what it leaves out in the title of the axis")
        .arg(interval)
        .arg(farthest)
        .arg(step)
        .arg(QLatin1String(series && !isOwnData(plot) ? "xFirstValue" : "start"));
}

QString withoutSource(const AbstractPlot &, const PlotData &data)
{
    const auto *computed = qobject_cast<const ComputedData *>(&data);
    const auto *difference = qobject_cast<const Difference *>(&data);
    if (difference && !difference->hasWrittenReference())
        return QStringLiteral("has no reference to subtract: write reference and the id of another "
                              "trace or of data");
    if (!computed || computed->source() || computed->hasWrittenSource())
        return {};
    return QStringLiteral("has no source and computes nothing: write source and the id of a trace or of "
                          "data");
}

QString ofOtherLength(const SampleSpan &minuend, const SampleSpan &subtrahend)
{
    return QStringLiteral(
               "subtracts %1 samples of its reference from %2 of its source, one by one, and leaves "
               "out the others: give it two traces of one length")
        .arg(subtrahend.size())
        .arg(minuend.size());
}

bool areElsewhere(const SampleSpan &minuend, const SampleSpan &subtrahend)
{
    const double tolerance = 1e-6 * std::abs(minuend.last().x() - minuend.first().x());
    return std::abs(subtrahend.first().x() - minuend.first().x()) > tolerance ||
           std::abs(subtrahend.last().x() - minuend.last().x()) > tolerance;
}

// Of samples that are paired by their places.
QString withUnequalPairs(const AbstractPlot &, const PlotData &data)
{
    const auto *difference = qobject_cast<const Difference *>(&data);
    const PlotData *source = difference ? difference->source() : nullptr;
    const PlotData *reference = difference ? difference->reference() : nullptr;
    if (!source || !reference || source->isChangePending() || reference->isChangePending())
        return {};
    const SampleSpan minuend = allSamples(*source);
    const SampleSpan subtrahend = allSamples(*reference);
    if (minuend.isEmpty() || subtrahend.isEmpty())
        return {};
    if (minuend.size() != subtrahend.size())
        return ofOtherLength(minuend, subtrahend);
    if (!areElsewhere(minuend, subtrahend))
        return {};
    return QStringLiteral(
               "subtracts samples at x = %1 to %2 from others at %3 to %4, one by one, whichever their "
               "x: give both the same start and interval")
        .arg(subtrahend.first().x())
        .arg(subtrahend.last().x())
        .arg(minuend.first().x())
        .arg(minuend.last().x());
}

// On an axis that counts something else than samples.
QString withSamplesForUnits(const AbstractPlot &plot, const PlotData &data)
{
    const auto *stream = qobject_cast<const StreamSeries *>(&data);
    const auto *axis = qobject_cast<const ChartAxis *>(plot.axisX());
    if (!stream || stream->hasInterval() || stream->size() < 2 || !axis ||
        (axis->unit().isEmpty() && axis->scale() != ChartAxis::Time))
        return {};
    const QString unit = axis->unit().isEmpty() ? QStringLiteral("s") : axis->unit();
    return QStringLiteral(
               "has no interval, so that its samples are 1 %1 apart: write interval and their distance "
               "in %1, such as 0.005 for 200 samples in 1 %1")
        .arg(unit);
}

const DataCheck dataChecks[] = {withoutNumbers,  withoutPlaces, withTooSmallSteps, atOnePlace,
                                withoutInterval, withoutSource, withUnequalPairs,  withSamplesForUnits};

QString outOfRange(const char *direction, double low, double high, double from, double to, const char *advice)
{
    return QStringLiteral(
               "has no sample in the visible range: its %1 go from %2 to %3, and %4 to %5 is visible; %6")
        .arg(QLatin1String(direction))
        .arg(low)
        .arg(high)
        .arg(from)
        .arg(to)
        .arg(QLatin1String(advice));
}

// Each at its place between two axes.
bool showsSamples(const AbstractPlot &plot)
{
    const PlotData *data = plot.plotData();
    return data && plot.axisX() && plot.axisY() && hasSamples(*data) && !data->usePointsAsSegments() &&
           !qobject_cast<const WaterfallPlot *>(&plot);
}

// Somebody looks at a part of the chart, and data elsewhere are no wonder.
bool isZoomed(const AbstractPlot &plot)
{
    const ZoomRect *zoom = plot.zoomRect();
    return zoom && (zoom->width() < 1.0 || zoom->height() < 1.0);
}

bool areApart(double low, double high, double from, double to)
{
    return high < qMin(from, to) || low > qMax(from, to);
}

} // namespace

bool hasSamples(const PlotData &data)
{
    return !data.inherits("PlotRegions") && !data.inherits("PlotBands");
}

bool reachesBaseline(const AbstractPlot &plot)
{
    if (const auto *trace = qobject_cast<const Trace *>(&plot))
        return trace->style() == Trace::Area || trace->style() == Trace::Bars;
    const auto *plain = qobject_cast<const GraphPlot *>(&plot);
    return !plain || plain->plotStyle() == GraphPlot::BarPlot || plain->plotStyle() == GraphPlot::FillPlot;
}

double shownBaseline(const AbstractPlot &plot)
{
    const auto *trace = qobject_cast<const Trace *>(&plot);
    return trace ? trace->shownBaseline() : plot.baseline();
}

bool isOwnData(const AbstractPlot &plot)
{
    const auto *trace = qobject_cast<const Trace *>(&plot);
    return trace ? !trace->series()
                 : qobject_cast<const LimitLine *>(&plot) || qobject_cast<const WaterfallPlot *>(&plot);
}

QVector<const PlotData *> dataBehind(const AbstractPlot &plot)
{
    QVector<const PlotData *> found{plot.plotData()};
    const auto add = [&found](const PlotData *data) {
        if (data && !found.contains(data))
            found.append(data);
    };
    if (const auto *waterfall = qobject_cast<const WaterfallPlot *>(&plot))
        add(waterfall->series());
    if (const auto *limit = qobject_cast<const LimitLine *>(&plot))
        add(limit->series());
    for (int i = 0; i < found.size(); ++i) {
        const auto *computed = qobject_cast<const ComputedData *>(found.at(i));
        const auto *difference = qobject_cast<const Difference *>(computed);
        add(computed ? computed->source() : nullptr);
        add(difference ? difference->reference() : nullptr);
    }
    // What a plot has made itself is told of that plot.
    const auto isOwn = [](const PlotData *data) {
        const auto *maker = data ? qobject_cast<const AbstractPlot *>(data->parent()) : nullptr;
        return maker && maker->plotData() == data && isOwnData(*maker);
    };
    found.removeFirst();
    found.erase(std::remove_if(found.begin(), found.end(), isOwn), found.end());
    return found;
}

QString reasonOfData(const AbstractPlot &plot)
{
    if (!plot.plotData())
        return {};
    QString ofBus = reasonOfBus(*plot.plotData());
    if (!ofBus.isEmpty())
        return ofBus;
    for (const DataCheck check : dataChecks) {
        QString reason = check(plot, *plot.plotData());
        if (!reason.isEmpty())
            return reason;
    }
    return {};
}

QString reasonOutOfRange(const AbstractPlot &plot)
{
    if (!showsSamples(plot) || isZoomed(plot))
        return {};
    const SampleSpan samples = allSamples(*plot.plotData());
    if (samples.isEmpty())
        return {};
    const double first = samples.first().x();
    const double last = samples.last().x();
    if (areApart(first, last, plot.minVisibleX(), plot.maxVisibleX()))
        return outOfRange("x values", first, last, plot.minVisibleX(), plot.maxVisibleX(),
                          isOwnData(plot) ? "set the range of its horizontal axis, or start and interval"
                                          : "set the range of its horizontal axis, or the x of the data");
    MinMax extent = samples.minMax(0, samples.size());
    if (!(extent.min <= extent.max))
        return {};
    // Bars and areas begin at the baseline, where they have one.
    const auto *trace = qobject_cast<const Trace *>(&plot);
    if (trace ? trace->beginsAtBaseline() : reachesBaseline(plot)) {
        extent.min = qMin(extent.min, shownBaseline(plot));
        extent.max = qMax(extent.max, shownBaseline(plot));
    }
    if (areApart(extent.min, extent.max, plot.minVisibleY(), plot.maxVisibleY()))
        return outOfRange("values", extent.min, extent.max, plot.minVisibleY(), plot.maxVisibleY(),
                          "set the range of its vertical axis");
    return {};
}

} // namespace graph
