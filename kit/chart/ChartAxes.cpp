#include "kit/chart/ChartAxes.h"

#include "kit/axis/ChartAxis.h"
#include "kit/chart/ChartTheme.h"
#include "kit/chart/PlottedData.h"
#include "kit/data/ItemName.h"
#include "kit/data/Telling.h"
#include "view/base/AbstractPlot.h"
#include "view/base/XYScale.h"
#include "view/frame/GraphView.h"

#include <algorithm>
#include <tuple>

namespace graph {

namespace {

// Between the labels of an axis and what is beyond them, in pixels.
constexpr int labelRoom = 6;

// Now, because the axes of the chart are about to replace it.
void tellOfRefusedAxis(const AbstractPlot *plot, const ValueAxis *axis, const char *property,
                       const char *direction, const char *otherProperty, const char *alignment)
{
    if (!axis)
        return;
    tell(plot, QStringLiteral(
                   "gets the %1 of the chart, because %2, given as its %1, is %3: write alignment: %4 in "
                   "it, or %5 instead of %1 here")
                   .arg(QLatin1String(property), nameOf(axis), QLatin1String(direction),
                        QLatin1String(alignment), QLatin1String(otherProperty)));
}

bool isUsed(const ValueAxis *axis, const QList<AbstractPlot *> &plots)
{
    return std::any_of(plots.begin(), plots.end(), [axis](const AbstractPlot *plot) {
        return plot->axisX() == axis || plot->axisY() == axis;
    });
}

// Of an axis that does not know its own margin.
void followRequiredMargin(ValueAxis *axis, QObject *receiver)
{
    const auto follow = [axis] { axis->setMargin(axis->requiredMargin() + labelRoom); };
    QObject::connect(axis, &ValueAxis::requiredMarginChanged, receiver, follow);
    follow();
}

} // namespace

ChartAxes::ChartAxes(ChartAxis *x, ChartAxis *y, XYScale *grid, XYScale *labels, ZoomRect *zoom)
    : m_x(x)
    , m_y(y)
    , m_grid(grid)
    , m_labels(labels)
    , m_zoom(zoom)
{
    m_clock.start();
    m_fitTimer.setSingleShot(true);
    m_fitTimer.setInterval(LingeringSpan::period);
    connect(&m_fitTimer, &QTimer::timeout, this, &ChartAxes::fitDue);
    x->setAlignment(Qt::AlignBottom);
    y->setAlignment(Qt::AlignLeft);
    adopt(x, true);
    adopt(y, true);
    connect(x, &ChartAxis::scaleChanged, this, &ChartAxes::roomChanged);
}

QVector<ValueAxis *> ChartAxes::all() const
{
    QVector<ValueAxis *> axes;
    for (const FittedAxis &fitted : m_axes) {
        if (fitted.axis())
            axes.append(fitted.axis());
    }
    return axes;
}

void ChartAxes::adopt(ValueAxis *axis, bool isOwn)
{
    if (find(axis))
        return;
    m_axes.emplace_back(axis, isOwn);
    if (!axis->labelsPlane())
        axis->setLabelsPlane(m_labels);
    if (!axis->linesPlane()) {
        axis->setLinesPlane(m_grid);
        if (axis != m_x && axis != m_y) {
            axis->setLineStyle(Qt::NoPen);
            m_gridless.insert(axis);
            connect(axis, &QObject::destroyed, this, [this, axis] { m_gridless.remove(axis); });
        }
    }
    if (auto *chartAxis = qobject_cast<ChartAxis *>(axis)) {
        chartAxis->setRoomBeyond(labelRoom);
        chartAxis->setRows(rowsOf(chartAxis, m_rows));
        chartAxis->setUnitBehind(!m_hasRoomAbove);
        connect(chartAxis, &ChartAxis::titleChanged, this, &ChartAxes::roomChanged);
        connect(chartAxis, &ChartAxis::scaleChanged, this, &ChartAxes::rangeWritten);
        connect(chartAxis, &ChartAxis::autoRangeChanged, this, &ChartAxes::rangeWritten);
    } else if (axis->margin() == 0) {
        followRequiredMargin(axis, this);
    }
    connect(axis, &ValueAxis::minValueChanged, this, [this, axis] { takeRange(axis); });
    connect(axis, &ValueAxis::maxValueChanged, this, [this, axis] { takeRange(axis); });
    connect(axis, &QObject::destroyed, this, &ChartAxes::axisDestroyed);
    connect(axis, &ValueAxis::unitChanged, this, &ChartAxes::roomChanged);
    connect(axis, &ValueAxis::visibleChanged, this, &ChartAxes::roomChanged);
    axis->setZoomRect(m_zoom);
    applyColors(axis);
}

void ChartAxes::takeRange(const ValueAxis *axis)
{
    FittedAxis *fitted = find(axis);
    if (m_isFitting || !fitted)
        return;
    fitted->takeRange();
    emit rangeWritten();
}

void ChartAxes::gather(const GraphView &view)
{
    const QObjectList objects = static_cast<const QObject &>(view).children();
    for (QObject *object : objects) {
        if (auto *axis = qobject_cast<ValueAxis *>(object))
            adopt(axis, true);
    }
    const auto plots = view.plots();
    for (const AbstractPlot *plot : plots) {
        const auto declared = plot->findChildren<ValueAxis *>(QString(), Qt::FindDirectChildrenOnly);
        for (ValueAxis *axis : declared)
            adopt(axis, true);
        if (plot->axisX())
            adopt(plot->axisX(), false);
        if (plot->axisY())
            adopt(plot->axisY(), false);
    }
    m_axes.erase(
        std::remove_if(m_axes.begin(), m_axes.end(), [](const FittedAxis &fitted) { return !fitted.axis(); }),
        m_axes.end());
    draw(plots);
}

void ChartAxes::draw(const QList<AbstractPlot *> &plots)
{
    QList<ValueAxis *> drawn;
    for (const FittedAxis &fitted : m_axes) {
        if (fitted.isOwn() && !isIdle(fitted.axis(), plots))
            drawn.append(fitted.axis());
    }
    m_isIdleX = isIdle(m_x, plots);
    m_grid->setStandingAxes(drawn);
    m_labels->setStandingAxes(drawn);
    chooseGrid(Qt::Horizontal, plots);
    chooseGrid(Qt::Vertical, plots);
}

void ChartAxes::chooseGrid(Qt::Orientation orientation, const QList<AbstractPlot *> &plots)
{
    const ValueAxis *first = orientation == Qt::Horizontal ? m_x : m_y;
    bool hasGrid = !isIdle(first, plots);
    for (const FittedAxis &fitted : m_axes) {
        ValueAxis *axis = fitted.axis();
        if (!m_gridless.contains(axis) || axis->orientation() != orientation)
            continue;
        const bool takesGrid = !hasGrid && isUsed(axis, plots);
        hasGrid = hasGrid || takesGrid;
        const Qt::PenStyle style = takesGrid ? Qt::SolidLine : Qt::NoPen;
        if (axis->lineStyle() == style)
            continue;
        axis->setLineStyle(style);
        axis->emitAxisChanged();
    }
}

// One of the first axes, which shows no trace and would say 0 to 1 beside those that do.
bool ChartAxes::isIdle(const ValueAxis *axis, const QList<AbstractPlot *> &plots) const
{
    const bool isHorizontal = axis == m_x;
    if ((!isHorizontal && axis != m_y) || (isHorizontal ? m_x : m_y)->hasWrittenRange() ||
        isUsed(axis, plots))
        return false;
    return std::any_of(plots.begin(), plots.end(), [isHorizontal](const AbstractPlot *plot) {
        return isHorizontal ? plot->axisX() : plot->axisY();
    });
}

void ChartAxes::giveTo(AbstractPlot *plot) const
{
    if (!plot->axisX()) {
        tellOfRefusedAxis(plot, plot->refusedAxisX(), "axisX", "vertical", "axisY", "Qt.AlignBottom");
        plot->setAxisX(m_x);
    }
    if (!plot->axisY()) {
        tellOfRefusedAxis(plot, plot->refusedAxisY(), "axisY", "horizontal", "axisX",
                          "Qt.AlignLeft or Qt.AlignRight");
        plot->setAxisY(m_y);
    }
}

void ChartAxes::takeFrom(AbstractPlot *plot) const
{
    if (plot->axisX() == m_x)
        plot->setAxisX(nullptr);
    if (plot->axisY() == m_y)
        plot->setAxisY(nullptr);
}

void ChartAxes::leavePlots()
{
    m_grid->setPlots({});
    m_labels->setPlots({});
}

void ChartAxes::setTheme(const ChartTheme &theme)
{
    m_theme = &theme;
    for (const FittedAxis &fitted : m_axes) {
        if (fitted.axis())
            applyColors(fitted.axis());
    }
}

void ChartAxes::applyColors(ValueAxis *axis) const
{
    if (!m_theme)
        return;
    axis->setLineColor(m_theme->gridColor());
    axis->setLineWidth(m_theme->gridWidth());
    axis->setLabelColor(m_theme->textColor());
    axis->setLabelFont(m_theme->font());
    if (auto *chartAxis = qobject_cast<ChartAxis *>(axis))
        chartAxis->setMinorGridColor(m_theme->minorGridColor());
    axis->emitAxisChanged();
}

void ChartAxes::setGridVisible(bool visible)
{
    m_grid->setVisible(visible);
}

void ChartAxes::nameAfter(const QVector<QPointer<AbstractPlot>> &traces, const QSizeF &size)
{
    const int font = m_theme ? m_theme->fontSize() : 0;
    const bool hasRoom = size.width() >= font * 25 && size.height() >= font * 12;
    QVector<const AbstractPlot *> only;
    for (FittedAxis &fitted : m_axes) {
        fitted.takeUnit(traces);
        only.append(fitted.onlyTrace(traces));
        fitted.takeTitle(hasRoom ? only.last() : nullptr);
    }
    const bool hasSeveral = only.size() - only.count(nullptr) > 1;
    const bool hasAxisAbove = std::any_of(m_axes.begin(), m_axes.end(), [](const FittedAxis &fitted) {
        const ValueAxis *axis = fitted.axis();
        return axis && axis->alignment() == Qt::AlignTop && axis->visible();
    });
    for (std::size_t i = 0; i < m_axes.size(); ++i) {
        auto *axis = qobject_cast<ChartAxis *>(m_axes[i].axis());
        if (!axis)
            continue;
        axis->setTitleColor(hasSeveral && only.at(int(i)) ? only.at(int(i))->penColor() : QColor());
        axis->setLabelsAbove(hasAxisAbove && axis->orientation() == Qt::Vertical);
    }
}

bool ChartAxes::hasVisible() const
{
    return std::any_of(m_axes.begin(), m_axes.end(),
                       [](const FittedAxis &fitted) { return fitted.axis() && fitted.axis()->visible(); });
}

void ChartAxes::setRows(AxisRows rows, bool hasRoomAbove)
{
    const void *first = firstHorizontal();
    const auto state = std::tie(m_rows, m_hasRoomAbove, m_first);
    if (state == std::tie(rows, hasRoomAbove, first))
        return; // or two charts that share an axis would tell it in turns, without an end
    const bool isOther = rows != m_rows;
    std::tie(m_rows, m_hasRoomAbove, m_first) = std::tie(rows, hasRoomAbove, first);
    for (FittedAxis &fitted : m_axes) {
        auto *axis = qobject_cast<ChartAxis *>(fitted.axis());
        if (!axis)
            continue;
        axis->setRows(rowsOf(axis, rows));
        axis->setUnitBehind(!hasRoomAbove);
    }
    if (isOther)
        emit roomChanged();
}

// That is drawn; null without one.
const ValueAxis *ChartAxes::firstHorizontal() const
{
    for (const FittedAxis &fitted : m_axes) {
        const ValueAxis *axis = fitted.axis();
        if (axis && axis->orientation() == Qt::Horizontal && axis->visible() && !(axis == m_x && m_isIdleX))
            return axis;
    }
    return nullptr;
}

AxisRows ChartAxes::rowsOf(const ValueAxis *axis, AxisRows rows) const
{
    const bool keepsNumbers = axis->orientation() == Qt::Vertical || axis == firstHorizontal();
    return keepsNumbers ? std::min(rows, AxisRows::WithoutTitles) : rows;
}

bool ChartAxes::hasUnitAbove(AxisRows rows) const
{
    return rows == AxisRows::All && std::any_of(m_axes.begin(), m_axes.end(), [](const FittedAxis &fitted) {
               const auto *axis = qobject_cast<const ChartAxis *>(fitted.axis());
               return axis && axis->orientation() == Qt::Vertical && axis->visible() &&
                      !axis->unit().isEmpty() && axis->title().isEmpty();
           });
}

int ChartAxes::heightBeside(Qt::Alignment side, AxisRows rows) const
{
    int height = 0;
    int shared = 0;
    for (const FittedAxis &fitted : m_axes) {
        const ValueAxis *axis = fitted.axis();
        if (!axis || axis->alignment() != side || !axis->visible() || (axis == m_x && m_isIdleX))
            continue;
        if (const auto *chartAxis = qobject_cast<const ChartAxis *>(axis))
            height += chartAxis->marginWith(rowsOf(axis, rows));
        else
            shared = std::max(shared, axis->margin());
    }
    return height + shared;
}

void ChartAxes::fit(Qt::Orientation orientation, const Look &look)
{
    for (FittedAxis &fitted : m_axes) {
        if (fitted.axis() && fitted.axis()->orientation() == orientation)
            fit(fitted, look);
    }
}

void ChartAxes::fit(FittedAxis &axis, const Look &look)
{
    const bool wasFitting = setFitting(true);
    if (axis.fit(lookAt(axis, look)) && !m_fitTimer.isActive())
        m_fitTimer.start();
    setFitting(wasFitting);
}

void ChartAxes::fitWhileMoved(const Look &look)
{
    const bool wasFitting = setFitting(true);
    for (FittedAxis &fitted : m_axes) {
        if (fitted.axis())
            fitted.fitWhileMoved(lookAt(fitted, look));
    }
    setFitting(wasFitting);
}

FittedAxis::Look ChartAxes::lookAt(const FittedAxis &axis, const Look &look) const
{
    FittedAxis::Look own{look.plotted, m_clock.elapsed(), {}, {}, 0.0, look.hasRoom};
    own.reach = axis.axis() == m_x ? look.reachX : look.plotted.reachBeyond(axis.axis());
    if (axis.axis() == m_x) {
        own.data = look.dataX;
        own.shown = look.shown.x;
    } else if (axis.axis() == m_y) {
        own.shown = look.shown.y;
    }
    return own;
}

bool ChartAxes::setFitting(bool fitting)
{
    return std::exchange(m_isFitting, fitting);
}

void ChartAxes::leaveToData(Qt::Orientations orientations)
{
    for (FittedAxis &fitted : m_axes) {
        if (fitted.axis() && orientations.testFlag(fitted.axis()->orientation()))
            fitted.leaveToData();
    }
}

FittedAxis *ChartAxes::furtherBeside(int side, double depth)
{
    double edge = 0.0;
    for (FittedAxis &fitted : m_axes) {
        const ValueAxis *axis = fitted.axis();
        if (!axis || int(axis->alignment()) != side || !axis->visible())
            continue;
        edge += axis->margin();
        if (depth < edge)
            return axis == m_x || axis == m_y ? nullptr : &fitted;
    }
    return nullptr;
}

FittedAxis *ChartAxes::find(const ValueAxis *axis)
{
    const auto fitted = std::find_if(m_axes.begin(), m_axes.end(),
                                     [axis](const FittedAxis &other) { return other.axis() == axis; });
    return fitted == m_axes.end() ? nullptr : &*fitted;
}

} // namespace graph
