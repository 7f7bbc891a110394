#include "kit/chart/SampleChecks.h"

#include "kit/axis/ChartAxis.h"
#include "kit/chart/ChartView.h"
#include "kit/chart/DataChecks.h"
#include "kit/data/StreamSeries.h"
#include "kit/plots/LimitLine.h"
#include "kit/plots/Trace.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace graph {

namespace {

// 1 January 5138 in seconds, 3 March 1973 in milliseconds.
constexpr double latestTime = 1e11;
// Some 300 000 years away.
constexpr double farthestTime = 1e13;
constexpr double infinity = std::numeric_limits<double>::infinity();

template <typename Value, typename Test> int countOf(const SampleSpan &samples, Value value, Test test)
{
    int count = 0;
    for (int i = 0; i < samples.size(); ++i)
        count += test(value(i)) ? 1 : 0;
    return count;
}

bool hasScale(const ValueAxis *axis, ChartAxis::ScaleType scale)
{
    const auto *chartAxis = qobject_cast<const ChartAxis *>(axis);
    return chartAxis && chartAxis->scale() == scale;
}

QString ofTwoLengths(int values, int positions)
{
    if (values == positions)
        return {};
    return QStringLiteral(
               "has %1 values and %2 positions, and the shorter list counts: write as many positions as "
               "values")
        .arg(values)
        .arg(positions);
}

// A list that is still empty is one that is to come.
QString withTwoLengths(const AbstractPlot &plot)
{
    if (const auto *limit = qobject_cast<const LimitLine *>(&plot)) {
        const int values = limit->values().value<QVector<double>>().size();
        const int positions = limit->positions().value<QVector<double>>().size();
        return values == 0 || (values == 1 && positions == 0) ? QString() : ofTwoLengths(values, positions);
    }
    const auto *trace = qobject_cast<const Trace *>(&plot);
    if (!trace || trace->series() || !trace->address().isEmpty())
        return {};
    const int values = trace->values().value<QVector<double>>().size();
    const int positions = trace->positions().value<QVector<double>>().size();
    return values == 0 || !trace->hasPositions() ? QString() : ofTwoLengths(values, positions);
}

QString withInfinity(const AbstractPlot &plot, const SampleSpan &samples)
{
    // A limit may be out of reach.
    if (qobject_cast<const LimitLine *>(&plot))
        return {};
    const MinMax extent = samples.minMax(0, samples.size());
    const auto isFar = [](double place) { return std::abs(place) > farthestEnd; };
    const bool isX = isFar(samples.first().x()) || isFar(samples.last().x());
    if (!isX && (extent.isEmpty() || (!isFar(extent.min) && !isFar(extent.max))))
        return {};
    const auto place = [&](int i) { return isX ? samples.x(i) : samples.y(i); };
    const int count = countOf(samples, place, isFar);
    const bool isInfinite = countOf(samples, place, [](double x) { return std::isinf(x); }) > 0;
    return QStringLiteral("has %1 of %2 %3 %4, which have no place in a chart: write %5")
        .arg(count)
        .arg(samples.size())
        .arg(isX ? QStringLiteral("positions") : QStringLiteral("values"),
             isInfinite ? QStringLiteral("infinite") : QStringLiteral("beyond %1").arg(farthestEnd),
             isX ? QStringLiteral("numbers") : QStringLiteral("NaN for a gap"));
}

QString withoutLogarithm(int count, int size, const char *what, const char *scale)
{
    return QStringLiteral(
               "has %1 of %2 %3 at 0 or below, which have no place on a logarithmic axis and are left out: "
               "write %4 for a linear one, or %3 above 0")
        .arg(count)
        .arg(size)
        .arg(QLatin1String(what), QLatin1String(scale));
}

QString offLogarithm(const AbstractPlot &plot, const SampleSpan &samples)
{
    const auto isLow = [](double value) { return value <= 0.0; };
    if (hasScale(plot.axisY(), ChartAxis::Logarithmic) && samples.minMax(0, samples.size()).min <= 0.0)
        return withoutLogarithm(countOf(
                                    samples, [&](int i) { return samples.y(i); }, isLow),
                                samples.size(), "values", "axisY.scale: ChartAxis.Linear");
    if (!hasScale(plot.axisX(), ChartAxis::Logarithmic) || samples.first().x() > 0.0)
        return {};
    // Spectra begin with what does not oscillate.
    if (samples.first().x() == 0.0 && samples.size() > 1 && samples.x(1) > 0.0)
        return QStringLiteral(
                   "has its first sample at x = 0, which has no place on a logarithmic axis, and leaves it "
                   "out: write %1, or the values from the next one on")
            .arg(isOwnData(plot) ? QStringLiteral("start: %1").arg(samples.x(1))
                                 : QStringLiteral("the x of the first sample"));
    return withoutLogarithm(countOf(
                                samples, [&](int i) { return samples.x(i); }, isLow),
                            samples.size(), "positions", "axisX.scale: ChartAxis.Linear");
}

QString withDates(const AbstractPlot &plot)
{
    const auto *trace = qobject_cast<const Trace *>(&plot);
    if (!trace || trace->series() || !trace->hasDates() || hasScale(plot.axisY(), ChartAxis::Time))
        return {};
    return QStringLiteral(
        "has dates as its values, which count as seconds since 1970: write them as positions, or "
        "axisY.scale: ChartAxis.Time");
}

// Where no calendar has a date.
QString offCalendar(double first, double last)
{
    if (std::max(std::abs(first), std::abs(last)) <= farthestTime)
        return {};
    return QStringLiteral(
               "has times from %1 to %2 s, of which %3 s are the farthest that an axis of time can name: "
               "it takes seconds since 1970")
        .arg(first)
        .arg(last)
        .arg(farthestTime);
}

QString inOtherTime(const AbstractPlot &plot, const SampleSpan &samples)
{
    const MinMax values = samples.minMax(0, samples.size());
    QString text = hasScale(plot.axisX(), ChartAxis::Time)
                       ? offCalendar(samples.first().x(), samples.last().x())
                       : QString();
    if (text.isEmpty() && !values.isEmpty() && hasScale(plot.axisY(), ChartAxis::Time))
        text = offCalendar(values.min, values.max);
    if (!text.isEmpty())
        return text;
    const bool isX = hasScale(plot.axisX(), ChartAxis::Time) && samples.last().x() > latestTime;
    const bool isY = hasScale(plot.axisY(), ChartAxis::Time) && !values.isEmpty() && values.max > latestTime;
    if (!isX && !isY)
        return {};
    return QStringLiteral(
               "has a time of %1, in the year 5138 or later, and seems to count milliseconds: an axis of "
               "time takes seconds since 1970, so divide by 1000")
        .arg(isX ? samples.last().x() : values.max, 0, 'f', 0);
}

QString withLittleCapacity(const GraphView &view, const PlotData &data)
{
    const auto *chart = qobject_cast<const ChartView *>(&view);
    const auto *stream = qobject_cast<const StreamSeries *>(&data);
    const double seconds = chart ? chart->follow() : 0.0;
    if (!stream || seconds <= 0.0 || stream->interval() == 0.0)
        return {};
    const double step = std::abs(stream->interval());
    const double needed = std::ceil(seconds / step);
    if (stream->capacity() >= needed)
        return {};
    return QStringLiteral(
               "keeps %1 samples, that is %2 s, where follow shows %3 s: write a capacity of %4 or more")
        .arg(stream->capacity())
        .arg(stream->capacity() * step)
        .arg(seconds)
        .arg(needed, 0, 'f', 0);
}

} // namespace

QString reasonOfNewData(const GraphView &view, const AbstractPlot &plot)
{
    const PlotData &data = *plot.plotData();
    QString text = withTwoLengths(plot);
    if (text.isEmpty())
        text = withLittleCapacity(view, data);
    if (text.isEmpty())
        text = withDates(plot);
    const SampleSpan samples = data.sampleSpan(-infinity, infinity);
    if (!text.isEmpty() || samples.isEmpty() || !qobject_cast<const GraphPlot *>(&plot))
        return text;
    text = withInfinity(plot, samples);
    if (text.isEmpty())
        text = offLogarithm(plot, samples);
    return text.isEmpty() ? inOtherTime(plot, samples) : text;
}

} // namespace graph
