#include "kit/chart/KitChecks.h"

#include "cursors/GraphCursor.h"
#include "cursors/GraphMarker.h"
#include "kit/axis/ChartAxis.h"
#include "kit/chart/ChartTheme.h"
#include "kit/chart/ChartView.h"
#include "kit/chart/DataChecks.h"
#include "kit/chart/Diagnosis.h"
#include "kit/chart/LegendSwitches.h"
#include "kit/data/ItemName.h"
#include "kit/data/StreamSeries.h"
#include "kit/plots/ColorScale.h"
#include "kit/plots/LimitLine.h"
#include "kit/plots/Trace.h"
#include "kit/plots/WaterfallPlot.h"
#include "plots/HeatmapPlot.h"
#include "view/base/AbstractPlot.h"
#include "view/frame/WorldPlot.h"
#include "view/zoom/ZoomRect.h"

#include <QJSValue>
#include <QQuickWindow>

#include <cmath>
#include <limits>

namespace graph {

namespace {

// 1 January 5138 in seconds, 3 March 1973 in milliseconds.
constexpr double latestTime = 1e11;
constexpr double infinity = std::numeric_limits<double>::infinity();

QString unitOf(const AbstractPlot &plot)
{
    const bool hasUnit = qobject_cast<const GraphPlot *>(&plot) && !qobject_cast<const WorldPlot *>(&plot);
    if (!hasUnit || !plot.plotData())
        return {};
    // Data know the units of the instruments only.
    const QString known = plot.plotData()->yUnits();
    const auto *trace = qobject_cast<const Trace *>(&plot);
    return known.isEmpty() && trace ? trace->unit() : known;
}

// One that is another one for another unit.
QString idOfAxis(const QString &unit)
{
    QString letters;
    for (const QChar &c : unit) {
        if (c.unicode() < 0x80 && c.isLetter())
            letters.append(c);
    }
    return letters.isEmpty() ? QStringLiteral("second") : QStringLiteral("axisOf") + letters;
}

// Levels and their differences share an axis; levels above different references are different numbers.
bool areAlike(const QString &a, const QString &b)
{
    const QLatin1String level("dB");
    return a == b || (a.startsWith(level) && b.startsWith(level) && (a == level || b == level));
}

// No eye tells them apart.
bool isAlike(const QColor &a, const QColor &b)
{
    constexpr int least = 4;
    return std::abs(a.red() - b.red()) <= least && std::abs(a.green() - b.green()) <= least &&
           std::abs(a.blue() - b.blue()) <= least;
}

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
    return values == 0 || positions == 0 ? QString() : ofTwoLengths(values, positions);
}

QString withInfinity(const AbstractPlot &plot, const SampleSpan &samples)
{
    // A limit may be out of reach.
    if (qobject_cast<const LimitLine *>(&plot))
        return {};
    const MinMax extent = samples.minMax(0, samples.size());
    const bool isX = std::isinf(samples.first().x()) || std::isinf(samples.last().x());
    if (!isX && (extent.isEmpty() || (std::isfinite(extent.min) && std::isfinite(extent.max))))
        return {};
    const int count = countOf(
        samples, [&](int i) { return isX ? samples.x(i) : samples.y(i); },
        [](double place) { return std::isinf(place); });
    return QStringLiteral("has %1 of %2 %3 infinite, which have no place in a chart: write %4")
        .arg(count)
        .arg(samples.size())
        .arg(isX ? QStringLiteral("positions") : QStringLiteral("values"),
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

QString inMilliseconds(const AbstractPlot &plot, const SampleSpan &samples)
{
    const MinMax values = samples.minMax(0, samples.size());
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

QVariantList elementsOf(const QQuickItem &item, const char *property)
{
    const QVariant list = item.property(property);
    return list.userType() == qMetaTypeId<QJSValue>() ? list.value<QJSValue>().toVariant().toList()
                                                      : list.toList();
}

bool isPart(const QQuickItem &item, const char *type)
{
    const QByteArray name(item.metaObject()->className());
    return name.startsWith(type) && name.mid(int(qstrlen(type))).startsWith("_QML");
}

// A part that does nothing without what it is for.
QString withoutTarget(const QQuickItem &item)
{
    struct Need
    {
        const char *part;
        const char *property;
        const char *advice;
    };
    static const Need needs[] = {
        {"ZoomArea", "zoomRect",
         "and does not zoom: write zoomRect: view.zoomRect; a Chart needs no ZoomArea"},
        {"BoxZoom", "zoomRect", "and does not zoom: write zoomRect: view.zoomRect; a Chart needs no BoxZoom"},
        {"PeakButtons", "cursor", "and moves nothing: write cursor and the id of a GraphCursor"},
        {"CursorReadout", "plot", "and has nothing to read: write plot and the id of a trace"},
    };
    for (const Need &need : needs) {
        if (isPart(item, need.part) && !item.property(need.property).value<QObject *>())
            return QStringLiteral("has no %1 %2")
                .arg(QLatin1String(need.property), QLatin1String(need.advice));
    }
    const bool isNameless = isPart(item, "Legend") && !item.parentItem()->inherits("QQuickLoader") &&
                            !elementsOf(item, "plots").isEmpty() && elementsOf(item, "_named").isEmpty();
    return isNameless
               ? QStringLiteral("has no entries, because none of its plots has a name: write name: \"Level\" "
                                "in each Trace")
               : QString();
}

QString outOfPlace(const QQuickItem &item, bool isInView)
{
    const QQuickItem *parent = item.parentItem();
    if (const auto *scale = qobject_cast<const ColorScale *>(&item)) {
        if (!scale->plot())
            return QStringLiteral("has no plot and shows nothing: write plot and the id of the plot");
        const bool hasColors =
            qobject_cast<WaterfallPlot *>(scale->plot()) || qobject_cast<HeatmapPlot *>(scale->plot());
        return hasColors ? QString()
                         : QStringLiteral(
                               "shows nothing of %1, which has no colours for its levels: write the id of a "
                               "WaterfallPlot or a HeatmapPlot")
                               .arg(nameOf(scale->plot()));
    }
    if (qobject_cast<const GraphCursor *>(&item)) {
        const bool hasView = isInView || (parent && parent->property("zoomRect").value<ZoomRect *>());
        return hasView ? QString()
                       : QStringLiteral("is in no view and has no plots: move it into the braces of a chart");
    }
    if (qobject_cast<const GraphCursor *>(parent))
        return withoutTarget(item);
    const bool isTag = isPart(item, "CursorTag") && !item.property("cursor").value<QObject *>();
    if (isTag || isPart(item, "CursorReadout"))
        return QStringLiteral(
            "is not in a cursor and has nothing to read: move it into the braces of a GraphCursor");
    return withoutTarget(item);
}

struct Look
{
    const GraphView &view;
    const Diagnosis *first = nullptr; // of the window
    const GraphView *firstView = nullptr;
    QVector<Finding> inside;
    QVector<Finding> outside;
};

void lookAt(const QQuickItem &item, const GraphView *around, Look *look)
{
    // A tag hides while it has nothing to say.
    if (!item.isVisible() && !isPart(item, "CursorTag"))
        return;
    if (const auto *view = qobject_cast<const GraphView *>(&item))
        around = view;
    const auto *diagnosis = qobject_cast<const Diagnosis *>(&item);
    if (diagnosis && around && !look->first && diagnosis->isEnabled()) {
        look->first = diagnosis;
        look->firstView = around;
    }
    const QString text = around && around != &look->view ? QString() : outOfPlace(item, around);
    if (!text.isEmpty())
        (around ? look->inside : look->outside).append({&item, text});
    const QList<QQuickItem *> children = item.childItems();
    for (const QQuickItem *child : children)
        lookAt(*child, around, look);
}

// A marker is an object of the cursor whose list it is in.
void lookAtMarkers(const GraphView &view, QVector<Finding> *findings)
{
    QVector<const GraphMarker *> taken;
    const auto isForgotten = [](const GraphMarker *marker) {
        return marker && !marker->isVisible() && !marker->hasWrittenVisible() && marker->posValue() != 0.0;
    };
    const auto cursors = view.findChildren<GraphCursor *>();
    for (GraphCursor *cursor : cursors) {
        QQmlListProperty<GraphMarker> markers = cursor->markers();
        for (ListIndex i = 0; i < markers.count(&markers); ++i)
            taken.append(markers.at(&markers, i));
    }
    for (const GraphMarker *marker : qAsConst(taken)) {
        if (isForgotten(marker))
            findings->append(
                {marker, QStringLiteral("has a posValue and is not drawn: write visible: true in it, or "
                                        "visible: false if that is meant")});
    }
    const auto markers = view.findChildren<GraphMarker *>(QString(), Qt::FindDirectChildrenOnly);
    for (const GraphMarker *marker : markers) {
        if (!taken.contains(marker))
            findings->append(
                {marker, QStringLiteral("is in no cursor and is not drawn: write GraphCursor { markers: "
                                        "GraphMarker { ... } }")});
    }
}

} // namespace

QString withUnknownTheme(const GraphView &view)
{
    const auto *chart = qobject_cast<const ChartView *>(&view);
    if (!chart)
        return {};
    const QVariant theme = chart->theme();
    bool isNumber = false;
    const int number = theme.toInt(&isNumber);
    const bool isText = theme.userType() == QMetaType::QString;
    const bool isKnown = isNumber ? number == ChartView::Dark || number == ChartView::Light
                                  : qobject_cast<ChartTheme *>(theme.value<QObject *>()) || theme.isNull();
    // What is misspelled behind "Chart." is undefined.
    if (theme.isValid() && !isText && isKnown)
        return {};
    const QString found = isText            ? QStringLiteral("the text \"%1\"").arg(theme.toString())
                          : isNumber        ? QString::number(number)
                          : theme.isValid() ? QString::fromLatin1(theme.typeName())
                                            : QStringLiteral("undefined");
    return QStringLiteral(
               "has %1 as its theme and is dark therefore: write theme: Chart.Light, Chart.Dark or a "
               "ChartTheme, without quotes")
        .arg(found);
}

// That a chart has no legend for traces without names is no wonder, unless the document has said how it is to be.
QString withoutNames(const GraphView &view)
{
    const auto *chart = qobject_cast<const ChartView *>(&view);
    if (!chart || !chart->legend()->isWanted())
        return {};
    const QVector<AbstractPlot *> plots = plotsOf(view);
    const auto hasName = [](const AbstractPlot *plot) {
        return !plot->property("name").toString().isEmpty() ||
               (plot->plotData() && !plot->plotData()->label().isEmpty());
    };
    const auto isNamed = [](const AbstractPlot *plot) { return qobject_cast<const GraphPlot *>(plot); };
    if (!std::any_of(plots.begin(), plots.end(), isNamed) || std::any_of(plots.begin(), plots.end(), hasName))
        return {};
    return QStringLiteral(
        "has a legend without entries, because none of its traces has a name: write name: \"Level\" "
        "in each Trace");
}

// A place of its own that does not count.
QString withUnusedPlaces(const GraphView &, const AbstractPlot &plot)
{
    const auto *trace = qobject_cast<const Trace *>(&plot);
    if (!trace || (trace->interval() == 1.0 && trace->start() == 0.0) ||
        (!trace->series() && (!trace->hasPositions() || !trace->address().isEmpty())))
        return {};
    return QStringLiteral(
               "has start and interval written, which count for values and addresses only: write %1")
        .arg(trace->series() ? QStringLiteral("those of %1").arg(nameOf(trace->series()))
                             : QStringLiteral("either them or positions"));
}

QString withAxisOfAnother(const GraphView &view, const AbstractPlot &plot)
{
    for (const ValueAxis *axis : {plot.axisX(), plot.axisY()}) {
        const auto *chart = axis ? qobject_cast<const ChartView *>(axis->parent()) : nullptr;
        if (chart && chart != &view && qobject_cast<const ChartView *>(&view))
            return QStringLiteral(
                       "has %1 as its axis, which another chart draws, beside axes that are not those of its "
                       "values: remove it; for a common x write zoomWith in the chart")
                .arg(nameOf(axis));
    }
    return {};
}

QString withoutValues(const GraphView &, const AbstractPlot &plot)
{
    const auto *trace = qobject_cast<const Trace *>(&plot);
    if (!trace || !trace->hasPositions() || trace->hasValues() || trace->series() ||
        !trace->address().isEmpty())
        return {};
    return QStringLiteral("has positions and no values: write as many values");
}

QString withEmptyAddress(const GraphView &, const AbstractPlot &plot)
{
    const auto *trace = qobject_cast<const Trace *>(&plot);
    if (!trace || !trace->hasWrittenAddress() || !trace->address().isEmpty() || trace->plotData())
        return {};
    return QStringLiteral(
        "has an empty address: write the name of the service, a comma and the prefix of its items, "
        "such as \"analyzer,spectrum\"");
}

QString withColorOfGround(const GraphView &view, const AbstractPlot &plot)
{
    const auto *chart = qobject_cast<const ChartView *>(&view);
    if (!chart || !qobject_cast<const GraphPlot *>(&plot) ||
        !isAlike(plot.penColor(), chart->colors()->plotBackground()))
        return {};
    return QStringLiteral(
               "has the colour of the background, %1: give it another color, or none, and the theme "
               "chooses one")
        .arg(plot.penColor().name());
}

QString withReversedColors(const GraphView &, const AbstractPlot &plot)
{
    const auto *waterfall = qobject_cast<const WaterfallPlot *>(&plot);
    if (!waterfall || !(waterfall->from() > waterfall->to()))
        return {};
    return QStringLiteral(
               "has a from of %1 above its to of %2, so that its colours run backwards: exchange the two; "
               "for a colorMap the other way round write a list of colours")
        .arg(waterfall->from())
        .arg(waterfall->to());
}

// A line without series is one to look at, unless somebody asks for its verdict.
QString withoutSeries(const GraphView &, const AbstractPlot &plot)
{
    const auto *limit = qobject_cast<const LimitLine *>(&plot);
    if (!limit || limit->hasWrittenSeries() || !limit->isAsked())
        return {};
    return QStringLiteral("has no series to judge, and its passed, margin or worstAt is in use: write series "
                          "and the id of a trace");
}

// A window that rolls, and ends that stay.
QString withRangeBesideFollow(const GraphView &view, const ValueAxis &axis)
{
    const auto *chart = qobject_cast<const ChartView *>(&view);
    const auto *chartAxis = qobject_cast<const ChartAxis *>(&axis);
    if (!chart || &axis != chart->axisX() || chart->follow() <= 0.0 || !chartAxis->hasWrittenRange())
        return {};
    return QStringLiteral(
               "has minValue or maxValue written, and the chart shows the newest %1 of its data by "
               "follow: remove one of the two")
        .arg(chart->follow());
}

QString withUselessInterval(const GraphView &, const ValueAxis &axis)
{
    const auto *chartAxis = qobject_cast<const ChartAxis *>(&axis);
    if (!chartAxis || chartAxis->scale() == ChartAxis::Linear || chartAxis->customInterval() == 0.0)
        return {};
    return QStringLiteral(
               "has a customInterval of %1, which counts on a linear axis only: remove it, or write "
               "tickInterval: ValueAxis.FixedTicks and the ticks")
        .arg(chartAxis->customInterval());
}

QString withAnotherUnit(const GraphView &view, const AbstractPlot &plot)
{
    const QString unit = unitOf(plot);
    if (unit.isEmpty() || !plot.axisY())
        return {};
    const QVector<AbstractPlot *> plots = plotsOf(view);
    for (const AbstractPlot *other : plots) {
        if (other == &plot)
            return {};
        const QString former = other->axisY() == plot.axisY() ? unitOf(*other) : QString();
        if (!former.isEmpty() && !areAlike(former, unit))
            return QStringLiteral("is in %1 on the axis of %2, which is in %3: write ChartAxis { id: %4; "
                                  "alignment: Qt.AlignRight } in the chart and axisY: %4 here")
                .arg(unit, nameOf(other), former, idOfAxis(unit));
    }
    return {};
}

QString reasonOfNewData(const GraphView &view, const AbstractPlot &plot)
{
    const PlotData &data = *plot.plotData();
    QString text = withTwoLengths(plot);
    if (text.isEmpty())
        text = withLittleCapacity(view, data);
    const SampleSpan samples = data.sampleSpan(-infinity, infinity);
    if (!text.isEmpty() || samples.isEmpty() || !qobject_cast<const GraphPlot *>(&plot))
        return text;
    text = withInfinity(plot, samples);
    if (text.isEmpty())
        text = offLogarithm(plot, samples);
    return text.isEmpty() ? inMilliseconds(plot, samples) : text;
}

QVector<Finding> misplacedParts(const GraphView &view)
{
    Look look{view, nullptr, nullptr, {}, {}};
    const QQuickItem *top = view.window() ? view.window()->contentItem() : nullptr;
    lookAt(top ? *top : static_cast<const QQuickItem &>(view), nullptr, &look);
    QVector<Finding> findings = look.inside;
    // What is in no view is told by one of them.
    if (look.firstView == &view)
        findings += look.outside;
    lookAtMarkers(view, &findings);
    return findings;
}

} // namespace graph
