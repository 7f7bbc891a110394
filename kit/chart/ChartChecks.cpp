#include "kit/chart/ChartChecks.h"

#include "axis/ValueAxis.h"
#include "data/PlotData.h"
#include "kit/chart/BusChecks.h"
#include "kit/chart/DataChecks.h"
#include "kit/chart/KitChecks.h"
#include "kit/chart/PartChecks.h"
#include "kit/chart/SampleChecks.h"
#include "kit/chart/ViewContents.h"
#include "kit/data/ItemName.h"
#include "plots/ContainerPlot.h"
#include "plots/GraphPlot.h"
#include "view/base/AbstractPlot.h"
#include "view/base/XYScale.h"
#include "view/frame/GraphView.h"
#include "view/frame/WorldPlot.h"

#include <cmath>

namespace graph {

namespace {

// Each check gives the sentence about its object, without the object's name; nothing when all is well.
using ViewCheck = QString (*)(const GraphView &);
using AxisCheck = QString (*)(const GraphView &, const ValueAxis &);
using PlotCheck = QString (*)(const GraphView &, const AbstractPlot &);

bool hasArea(const QQuickItem &item)
{
    return item.width() > 1.0 && item.height() > 1.0;
}

QString withoutSize(const GraphView &view)
{
    if (view.width() > 0.0 && view.height() > 0.0)
        return {};
    return QStringLiteral("has no size (it is %1 x %2): write width and height, or anchors.fill: parent")
        .arg(view.width())
        .arg(view.height());
}

QString withoutRoom(const GraphView &view)
{
    if (view.plots().isEmpty() || !view.plotArea() || hasArea(*view.plotArea()))
        return {};
    return QStringLiteral(
               "has no room for its plots: the margins of its axes take all of its %1 x %2 pixels. Make it "
               "larger, or the margins smaller")
        .arg(view.width())
        .arg(view.height());
}

QString withUnlistedAxis(const GraphView &view)
{
    const QVector<ValueAxis *> listed = axesOf(view);
    const auto axes = view.findChildren<ValueAxis *>(QString(), Qt::FindDirectChildrenOnly);
    for (const ValueAxis *axis : axes) {
        // Beside a drawn one it may be a scale that is not to be drawn.
        const bool isReplaced = std::any_of(listed.begin(), listed.end(), [axis](const ValueAxis *other) {
            return other == axis || other->orientation() == axis->orientation();
        });
        if (!isReplaced && !axis->labelsPlane() && !axis->linesPlane())
            return QStringLiteral("does not draw %1, which is not in its list of axes: write axes: [ "
                                  "ValueAxis { ... } ]")
                .arg(nameOf(axis));
    }
    return {};
}

QString withUnusedData(const GraphView &view)
{
    const QVector<AbstractPlot *> plots = plotsOf(view);
    const auto isEmpty = [](const AbstractPlot *plot) {
        return qobject_cast<const GraphPlot *>(plot) && !qobject_cast<const WorldPlot *>(plot) &&
               !plot->plotData();
    };
    const auto empty = std::find_if(plots.begin(), plots.end(), isEmpty);
    if (empty == plots.end())
        return {};
    for (PlotData *data : seriesOf(view)) {
        const auto shows = [data](const AbstractPlot *plot) { return plot->plotData() == data; };
        if (data->size() > 0 && std::none_of(plots.begin(), plots.end(), shows))
            return QStringLiteral(
                       "holds %1, which no plot shows, and %2 without data: give that plot its plotData")
                .arg(nameOf(data), nameOf(*empty));
    }
    return {};
}

QString withReversedRange(const GraphView &, const ValueAxis &axis)
{
    // Axes that can be reversed are another class.
    if (axis.inherits("graph::ChartAxis") || !(axis.minValue() > axis.maxValue()))
        return {};
    return QStringLiteral("has a minValue of %1 above its maxValue of %2: exchange the two; for values that "
                          "fall from left "
                          "to right or upwards write rangeOrder: ValueAxis.Decreasing, or use a ChartAxis")
        .arg(axis.minValue())
        .arg(axis.maxValue());
}

QString withUnusableRange(const GraphView &view, const ValueAxis &axis)
{
    if (std::isfinite(axis.minValue()) && std::isfinite(axis.maxValue()) &&
        axis.minValue() != axis.maxValue())
        return {};
    // The ends may be those of data that are still to come.
    const QVector<AbstractPlot *> plots = plotsOf(view);
    const bool hasData = std::any_of(plots.begin(), plots.end(), [&axis](const AbstractPlot *plot) {
        return (plot->axisX() == &axis || plot->axisY() == &axis) && plot->isValid();
    });
    if (!hasData)
        return {};
    return QStringLiteral(
               "has no range, it goes from %1 to %2: give it two numbers, a minValue below its maxValue")
        .arg(axis.minValue())
        .arg(axis.maxValue());
}

QString outsideOfView(const GraphView &view, const AbstractPlot &plot)
{
    if (isInside(&plot, view) || qobject_cast<const WorldPlot *>(&plot))
        return {};
    return QStringLiteral(
               "is outside of %1, whose axes it uses, and knows neither its area nor its zoom: move it into "
               "the view's braces")
        .arg(nameOf(&view));
}

QString insideOfAnItem(const GraphView &view, const AbstractPlot &plot)
{
    if (plot.parentItem() == &view || !isInside(&plot, view) ||
        (plot.zoomRect() == view.zoomRect() && hasArea(plot)))
        return {};
    return QStringLiteral(
               "is a child of %1 instead of %2, which looks at its own children only: move it there")
        .arg(nameOf(plot.parentItem()), nameOf(&view));
}

QString afterView(const GraphView &view, const AbstractPlot &plot)
{
    if (plot.parentItem() != &view || view.hasPlot(&plot))
        return {};
    return QStringLiteral("was created after %1, which then knows nothing of it: declare it in the view and "
                          "switch visible, "
                          "create the whole view again, or use a Chart, which takes plots at any time")
        .arg(nameOf(&view));
}

QString axisTaken(const ValueAxis *axis, const char *name, const char *direction, const char *alignment)
{
    return QStringLiteral("takes no %1 for its %2, because the alignment of %3 was not known in time: write "
                          "alignment: %4 "
                          "there as a plain literal, not as a binding")
        .arg(QLatin1String(direction), QLatin1String(name), nameOf(axis), QLatin1String(alignment));
}

QString withSwappedAxes(const GraphView &, const AbstractPlot &plot)
{
    const ValueAxis *x = plot.refusedAxisX();
    const ValueAxis *y = plot.refusedAxisY();
    if (plot.axisX() || plot.axisY() || !x || !y || x->orientation() != Qt::Vertical ||
        y->orientation() != Qt::Horizontal)
        return {};
    return QStringLiteral("has its axes swapped: write axisX for %1, which is horizontal, and axisY for %2, "
                          "which is vertical")
        .arg(nameOf(y), nameOf(x));
}

QString withLateAxis(const GraphView &, const AbstractPlot &plot)
{
    if (!plot.axisX() && plot.refusedAxisX() && plot.refusedAxisX()->orientation() == Qt::Horizontal)
        return axisTaken(plot.refusedAxisX(), "axisX", "horizontal axis", "Qt.AlignBottom");
    if (!plot.axisY() && plot.refusedAxisY() && plot.refusedAxisY()->orientation() == Qt::Vertical)
        return axisTaken(plot.refusedAxisY(), "axisY", "vertical axis", "Qt.AlignLeft");
    if (plot.axisX() && plot.axisX()->orientation() == Qt::Vertical)
        return axisTaken(plot.axisX(), "axisX", "vertical axis", "Qt.AlignLeft");
    if (plot.axisY() && plot.axisY()->orientation() == Qt::Horizontal)
        return axisTaken(plot.axisY(), "axisY", "horizontal axis", "Qt.AlignBottom");
    return {};
}

QString withWrongAxis(const GraphView &, const AbstractPlot &plot)
{
    if (!plot.axisX() && plot.refusedAxisX())
        return QStringLiteral("has no horizontal axis: %1, given as axisX, is vertical; write alignment: "
                              "Qt.AlignBottom there")
            .arg(nameOf(plot.refusedAxisX()));
    if (!plot.axisY() && plot.refusedAxisY())
        return QStringLiteral("has no vertical axis: %1, given as axisY, is horizontal; write alignment: "
                              "Qt.AlignLeft there")
            .arg(nameOf(plot.refusedAxisY()));
    return {};
}

// For both axes and for data, beside a plot that shows something: it is merely empty.
bool isToCome(const GraphView &view, const AbstractPlot &plot)
{
    if (plot.plotData() || plot.axisX() || plot.axisY())
        return false;
    const QVector<AbstractPlot *> plots = plotsOf(view);
    return std::any_of(plots.begin(), plots.end(),
                       [](const AbstractPlot *other) { return other->isValid(); });
}

QString withoutAxis(const GraphView &view, const AbstractPlot &plot)
{
    // Figures have a range without axes, too.
    if ((plot.axisX() && plot.axisY()) || qobject_cast<const ContainerPlot *>(&plot))
        return {};
    const auto *overview = qobject_cast<const WorldPlot *>(&plot);
    if (overview && !overview->graphPlot())
        return QStringLiteral("shows no plot: write graphPlot and the id of the plot");
    if (isToCome(view, plot))
        return {};
    const QString missing = plot.axisX() ? QStringLiteral("axisY") : QStringLiteral("axisX");
    const QString both = plot.axisX() || plot.axisY() ? missing : QStringLiteral("axisX and axisY");
    return QStringLiteral("has no %1: write %1 in %2, with the id of an axis of the view")
        .arg(both, plot.plotData() ? nameOf(plot.plotData())
                                   : QStringLiteral("its plotData or in the plot itself"));
}

QString withoutArea(const GraphView &view, const AbstractPlot &plot)
{
    if (hasArea(plot) || !view.plotArea() || !hasArea(*view.plotArea()))
        return {};
    return QStringLiteral(
               "has no size (it is %1 x %2): the view gives its plots their size; remove width, height and "
               "anchors from it")
        .arg(plot.width())
        .arg(plot.height());
}

QString withoutPoint(const GraphView &, const AbstractPlot &plot)
{
    const auto *trace = qobject_cast<const GraphPlot *>(&plot);
    // Others draw their points themselves.
    if (!trace || trace->plotStyle() != GraphPlot::ScatterPlot || trace->graphPoint() || !trace->isValid() ||
        typeNameOf(&plot) != QLatin1String("GraphPlot"))
        return {};
    return QStringLiteral("has points without a form, which costs a line in the log for each of them: write "
                          "graphPoint: GraphPointDot {}, or another form");
}

// Types of the kit call it otherwise than those of the engine.
QLatin1String colorProperty(const AbstractPlot &plot)
{
    return QLatin1String(plot.metaObject()->indexOfProperty("color") < 0 ? "penColor" : "color");
}

QString withInvisiblePen(const GraphView &, const AbstractPlot &plot)
{
    if (plot.penColor().alpha() > 0 || !qobject_cast<const GraphPlot *>(&plot))
        return {};
    return QStringLiteral("is drawn in a colour without any opacity: give it another %1")
        .arg(colorProperty(plot));
}

// Of the sides it is at one, and draws its labels beside the plot area only there.
QString withoutSide(const GraphView &, const ValueAxis &axis)
{
    const Qt::Alignment sides = Qt::AlignLeft | Qt::AlignRight | Qt::AlignTop | Qt::AlignBottom;
    if (axis.alignment() & sides)
        return {};
    return QStringLiteral("has an alignment that is no side, and its labels are in the plot area: write "
                          "Qt.AlignLeft, Qt.AlignRight, Qt.AlignTop or Qt.AlignBottom");
}

const ViewCheck viewChecks[] = {withoutSize,    withoutRoom,      withUnlistedAxis,
                                withUnusedData, withUnknownTheme, withoutNames};
const AxisCheck axisChecks[] = {withoutSide,         withReversedRange,     withUnusableRange,
                                withUselessInterval, withRangeBesideFollow, withTicksElsewhere};
const PlotCheck plotChecks[] = {outsideOfView,     insideOfAnItem,     afterView,         withSwappedAxes,
                                withLateAxis,      withWrongAxis,      withoutAxis,       withoutArea,
                                withInvisiblePen,  withoutPoint,       withEmptyAddress,  withColorOfGround,
                                withAnotherUnit,   withReversedColors, withUnusedPlaces,  withoutValues,
                                withAxisOfAnother, withoutSeries,      withoutComparison, withPlainStyle};

template <typename Checks, typename... Subject>
QString firstReason(const Checks &checks, const Subject &...subject)
{
    for (const auto check : checks) {
        QString reason = check(subject...);
        if (!reason.isEmpty())
            return reason;
    }
    return {};
}

void add(QVector<Finding> *findings, const QObject *about, const QString &text)
{
    if (!text.isEmpty())
        findings->append({about, text});
}

// Those of the view and of its plots; gives the ones that something is wrong with.
QVector<const QObject *> checkAxes(const GraphView &view, const QVector<AbstractPlot *> &plots,
                                   QVector<Finding> *findings)
{
    QVector<ValueAxis *> axes = axesOf(view);
    for (const AbstractPlot *plot : plots) {
        for (ValueAxis *axis : {plot->axisX(), plot->axisY()}) {
            if (axis && !axes.contains(axis))
                axes.append(axis);
        }
    }
    QVector<const QObject *> troubled;
    for (const ValueAxis *axis : qAsConst(axes)) {
        const QString text = firstReason(axisChecks, view, *axis);
        add(findings, axis, text);
        if (!text.isEmpty())
            troubled.append(axis);
    }
    return troubled;
}

// hasGoodAxes: nothing is wrong with those of the plot.
void checkPlot(const GraphView &view, const AbstractPlot &plot, bool isNew, bool hasGoodAxes,
               QVector<Finding> *findings)
{
    const QString ofPlot = firstReason(plotChecks, view, plot);
    add(findings, &plot, ofPlot);
    const PlotData *data = plot.plotData();
    if (!data)
        return;
    const QObject *about = isOwnData(plot) ? static_cast<const QObject *>(&plot) : data;
    const QString ofData = reasonOfData(plot);
    add(findings, about, ofData);
    for (const PlotData *behind : dataBehind(plot))
        add(findings, behind, reasonOfBus(*behind));
    if (!ofPlot.isEmpty() || !ofData.isEmpty() || !isNew)
        return;
    const QString ofNewData = reasonOfNewData(view, plot);
    add(findings, about, ofNewData.isEmpty() && hasGoodAxes ? reasonOutOfRange(plot) : ofNewData);
}

} // namespace

QVector<Finding> findReasons(const GraphView &view, const std::function<bool(const AbstractPlot &)> &isNew,
                             bool withStrays)
{
    QVector<Finding> findings;
    add(&findings, &view, firstReason(viewChecks, view));
    if (view.width() <= 0.0 || view.height() <= 0.0)
        return findings;
    const QVector<AbstractPlot *> plots = plotsOf(view);
    const QVector<const QObject *> troubled = checkAxes(view, plots, &findings);
    for (const AbstractPlot *plot : plots) {
        const bool hasGoodAxes = !troubled.contains(plot->axisX()) && !troubled.contains(plot->axisY());
        checkPlot(view, *plot, isNew(*plot), hasGoodAxes, &findings);
    }
    return findings + misplacedParts(view, withStrays);
}

} // namespace graph
