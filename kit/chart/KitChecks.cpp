#include "kit/chart/KitChecks.h"

#include "kit/axis/AxisUnit.h"
#include "kit/axis/ChartAxis.h"
#include "kit/chart/ChartTheme.h"
#include "kit/chart/ChartView.h"
#include "kit/chart/LegendSwitches.h"
#include "kit/chart/ViewContents.h"
#include "kit/data/ItemName.h"
#include "kit/plots/LimitLine.h"
#include "kit/plots/PlotUnits.h"
#include "kit/plots/Trace.h"
#include "kit/plots/WaterfallPlot.h"
#include "view/base/AbstractPlot.h"
#include "view/frame/WorldPlot.h"

#include <QJSValue>

namespace graph {

namespace {

QString unitOf(const AbstractPlot &plot)
{
    const bool hasUnit = qobject_cast<const GraphPlot *>(&plot) && !qobject_cast<const WorldPlot *>(&plot);
    return hasUnit ? unitOfValues(plot) : QString();
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
    return AxisUnit(a).symbol() == AxisUnit(b).symbol() ||
           (a.startsWith(level) && b.startsWith(level) && (a == level || b == level));
}

// No eye tells them apart.
bool isAlike(const QColor &a, const QColor &b)
{
    constexpr int least = 4;
    return std::abs(a.red() - b.red()) <= least && std::abs(a.green() - b.green()) <= least &&
           std::abs(a.blue() - b.blue()) <= least;
}

// What is misspelled behind "Chart." is undefined.
bool isTheme(const QVariant &theme)
{
    if (!theme.isValid() || theme.userType() == QMetaType::QString)
        return false;
    bool isNumber = false;
    const int number = theme.toInt(&isNumber);
    return isNumber ? number == ChartView::Dark || number == ChartView::Light
                    : qobject_cast<ChartTheme *>(theme.value<QObject *>()) || theme.isNull();
}

bool isObject(const QVariant &theme)
{
    return theme.userType() == qMetaTypeId<QJSValue>() || theme.userType() == QMetaType::QVariantMap;
}

QString shownTheme(const QVariant &theme)
{
    if (!theme.isValid())
        return QStringLiteral("undefined");
    if (theme.userType() == QMetaType::QString)
        return QStringLiteral("the text \"%1\"").arg(theme.toString());
    bool isNumber = false;
    const int number = theme.toInt(&isNumber);
    return isNumber ? QString::number(number) : QString::fromLatin1(theme.typeName());
}

} // namespace

QString withUnknownTheme(const GraphView &view)
{
    const auto *chart = qobject_cast<const ChartView *>(&view);
    if (!chart || isTheme(chart->theme()))
        return {};
    if (isObject(chart->theme()))
        return QStringLiteral(
            "has an object of JavaScript as its theme and is dark therefore: write theme: ChartTheme { "
            "background: \"black\" }, with the type in front and without brackets");
    return QStringLiteral(
               "has %1 as its theme and is dark therefore: write theme: Chart.Light, Chart.Dark or a "
               "ChartTheme, without quotes")
        .arg(shownTheme(chart->theme()));
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
    const auto *limit = qobject_cast<const LimitLine *>(&plot);
    const bool lacksValues =
        trace ? trace->hasPositions() && !trace->hasValues() && !trace->series() && trace->address().isEmpty()
              : limit && limit->hasPositionsOnly();
    if (!lacksValues)
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
    if (waterfall && waterfall->from() == waterfall->to())
        return QStringLiteral(
                   "has from and to both at %1, with no colour between them: write two different levels")
            .arg(waterfall->from());
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

// Its verdict stays that of samples that have not come.
QString withoutComparison(const GraphView &, const AbstractPlot &plot)
{
    const auto *limit = qobject_cast<const LimitLine *>(&plot);
    if (!limit || !limit->series() || !limit->isAsked())
        return {};
    const MinMax samples = extentX(*limit->series());
    const MinMax points = limit->dataExtent().x;
    if (samples.isEmpty() || points.isEmpty() || (samples.min <= points.max && points.min <= samples.max))
        return {};
    return QStringLiteral(
               "compares nothing: its positions go from %1 to %2, and the samples of its series from "
               "%3 to %4; write positions around these")
        .arg(points.min)
        .arg(points.max)
        .arg(samples.min)
        .arg(samples.max);
}

// Bars are what a plain plot shows unless something else is written.
QString withPlainStyle(const GraphView &, const AbstractPlot &plot)
{
    const auto *trace = qobject_cast<const Trace *>(&plot);
    const bool isArea = trace && trace->plotStyle() == GraphPlot::FillPlot && trace->style() != Trace::Area;
    const bool arePoints = trace && trace->style() != Trace::Points &&
                           trace->style() != Trace::LineAndPoints &&
                           (trace->plotStyle() == GraphPlot::ScatterPlot || trace->graphPoint());
    if (!isArea && !arePoints)
        return {};
    return QStringLiteral(
               "has plotStyle or graphPoint written, which count in a GraphPlot only: write style: "
               "Trace.%1")
        .arg(isArea ? QStringLiteral("Area") : QStringLiteral("Points"));
}

QString withTicksElsewhere(const GraphView &view, const ValueAxis &axis)
{
    const auto *chartAxis = qobject_cast<const ChartAxis *>(&axis);
    if (!chartAxis || axis.tickInterval() != ValueAxis::FixedTicks || axis.ticks().isEmpty())
        return {};
    const auto [from, to] = std::minmax({axis.minValue(), axis.maxValue()});
    const QList<qreal> ticks = axis.ticks();
    const bool isSeen = std::any_of(ticks.begin(), ticks.end(), [low = from, high = to](double tick) {
        return tick >= low && tick <= high;
    });
    // The range may be that of data that are still to come.
    const QVector<AbstractPlot *> plots = plotsOf(view);
    const bool hasData = std::any_of(plots.begin(), plots.end(), [&axis](const AbstractPlot *plot) {
        return (plot->axisX() == &axis || plot->axisY() == &axis) && plot->isValid();
    });
    if (isSeen || !hasData)
        return {};
    return QStringLiteral(
               "has none of its %1 ticks between %2 and %3, its range: write ticks that are there, or "
               "no tickInterval")
        .arg(ticks.size())
        .arg(from)
        .arg(to);
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
    if (chartAxis && chartAxis->hasTooManyTicks())
        return QStringLiteral(
                   "has %1 ticks, more than there are pixels, and chooses its own: write fewer, or none")
            .arg(chartAxis->ticks().size());
    if (chartAxis && chartAxis->scale() == ChartAxis::Linear && chartAxis->hasTooSmallInterval())
        return QStringLiteral(
                   "has a customInterval of %1, of which the range from %2 to %3 has more than there are "
                   "pixels, and chooses its ticks: write a larger one, or none")
            .arg(chartAxis->customInterval())
            .arg(chartAxis->minVisible())
            .arg(chartAxis->maxVisible());
    if (!chartAxis || chartAxis->scale() == ChartAxis::Linear || chartAxis->customInterval() == 0.0)
        return {};
    return QStringLiteral(
               "has a customInterval of %1, which counts on a linear axis only: remove it, or write "
               "tickInterval: ValueAxis.FixedTicks and the ticks")
        .arg(chartAxis->customInterval());
}

// A reading is in the unit of its trace, the numbers beside it in that of the axis.
QString withUnitBesideAxis(const GraphView &view, const AbstractPlot &plot, const QString &unit)
{
    const ValueAxis *axis = plot.axisY();
    if (axis->unit().isEmpty() || areAlike(axis->unit(), unit))
        return {};
    const auto *chart = qobject_cast<const ChartView *>(&view);
    const QString written = QStringLiteral("unit: \"%1\"").arg(unit);
    return QStringLiteral(
               "is in %1 and its axis in %2, so that readings differ from the numbers of the axis: write "
               "%3, or the unit of the axis in both")
        .arg(unit, axis->unit(),
             chart && axis == chart->axisY() ? QStringLiteral("axisY.%1 in the chart").arg(written)
                                             : QStringLiteral("%1 in %2").arg(written, nameOf(axis)));
}

QString withAnotherUnit(const GraphView &view, const AbstractPlot &plot)
{
    const QString unit = unitOf(plot);
    if (unit.isEmpty() || !plot.axisY() || plot.axisY()->unit() == unit)
        return {};
    const QVector<AbstractPlot *> plots = plotsOf(view);
    for (const AbstractPlot *other : plots) {
        if (other == &plot)
            break;
        const QString former = other->axisY() == plot.axisY() ? unitOf(*other) : QString();
        if (!former.isEmpty() && !areAlike(former, unit))
            return QStringLiteral("is in %1 on the axis of %2, which is in %3: write ChartAxis { id: %4; "
                                  "alignment: Qt.AlignRight } in the chart and axisY: %4 here")
                .arg(unit, nameOf(other), former, idOfAxis(unit));
    }
    return withUnitBesideAxis(view, plot, unit);
}

} // namespace graph
