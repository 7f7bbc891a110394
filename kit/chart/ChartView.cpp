#include "kit/chart/ChartView.h"

#include "common/SceneExit.h"
#include "cursors/GraphCursor.h"
#include "kit/axis/ChartAxis.h"
#include "kit/chart/BarRoom.h"
#include "kit/chart/Canvas.h"
#include "kit/chart/ChartAxes.h"
#include "kit/chart/ChartCursors.h"
#include "kit/chart/ChartLegend.h"
#include "kit/chart/ChartPlots.h"
#include "kit/chart/ChartRoom.h"
#include "kit/chart/ChartTexts.h"
#include "kit/chart/ChartTheme.h"
#include "kit/chart/ChartZoom.h"
#include "kit/chart/CursorSwitches.h"
#include "kit/chart/LegendSwitches.h"
#include "kit/chart/ScenePainting.h"
#include "kit/chart/ThemeChoice.h"
#include "kit/chart/ZoomSwitches.h"
#include "kit/data/NumberList.h"
#include "kit/data/Store.h"
#include "kit/data/Telling.h"
#include "kit/plots/Shading.h"
#include "kit/plots/Trace.h"
#include "view/base/AbstractPlot.h"
#include "view/base/StrokeNode.h"
#include "view/base/XYScale.h"
#include "view/zoom/ZoomRect.h"

#include <QPainter>
#include <QQuickWindow>

#include <algorithm>

namespace graph {

namespace {

static_assert(int(ChartView::Dark) == ThemeChoice::Dark && int(ChartView::Light) == ThemeChoice::Light);

// The part of the extent that a zoom can show: small enough for ten samples of a day, and so large that
// moving it by a pixel is no matter of rounding.
constexpr double leastPart = 1e-8;
constexpr double defaultWidth = 400.0;
constexpr double defaultHeight = 240.0;
constexpr double labelsZ = 1.0;
constexpr double overlayZ = 3.0;

bool hasSize(const QQuickItem *item)
{
    return item->width() != 0.0 || item->height() != 0.0;
}

// Positioners, layouts and images are empty at first, and then as large as what comes; those of the document's traces
// are not.
bool sizesItself(const QQuickItem *item)
{
    return (item->inherits("QQuickImplicitSizeItem") && !item->inherits("QQuickLoader")) ||
           item->inherits("QQuickLayout");
}

// Plots and cursors that go through a framebuffer are one pixel off with the software renderer.
void drawAsImage(QQuickItem *item)
{
    auto *painted = qobject_cast<QQuickPaintedItem *>(item);
    if (painted && item->window() && isSoftwareSceneGraph(*item->window()))
        painted->setRenderTarget(QQuickPaintedItem::Image);
}

} // namespace

/*!
    \qmltype Chart
    \inqmlmodule graph_kit
    \inherits GraphView
    \brief A chart that needs nothing but its traces.

    \image colours.png A chart with two traces and a legend, in a theme of its own

    \code
    Chart {
        width: 800; height: 480
        Trace { name: "Level"; values: [1, 5, 3, 8, 2]; interval: 0.5; unit: "V" }
    }
    \endcode

    Traces may come and go at any time: as children, from a Repeater, an Instantiator or a Loader, and from
    createObject(chart). All other plots can be children too; one whose data has no axes gets the axes of the
    chart. A plot that is black, the colour of a plot that names none, gets a colour of the theme.

    The ranges of axes with a WaterfallPlot are exactly its extent, without a grid, and a ColorScale is placed at
    the right of the plot area.

    Without a size it is 400 by 240 pixels. Items that have a size of their own stay where they are, and so do positioners,
    layouts and images, whose size comes with their content; others are stretched over the plot area.

    x runs to the right in every language: \c LayoutMirroring is off in a chart, for items of your own, too, unless the
    document switches it on there.
*/
ChartView::ChartView(QQuickItem *parent)
    : GraphView(parent)
    , m_axisX(new ChartAxis(this))
    , m_axisY(new ChartAxis(this))
    , m_legend(new LegendSwitches(this))
    , m_cursor(new CursorSwitches(this))
    , m_zoomSwitches(new ZoomSwitches(this))
    , m_theme(std::make_unique<ThemeChoice>(this))
    , m_grid(new XYScale(this))
    , m_labels(new XYScale(this))
    , m_underlay(new QQuickItem(this))
    , m_overlay(new QQuickItem(this))
    , m_bindingTexts(new ChartTexts(this))
    , m_export(new ChartExport(this))
    , m_axes(std::make_unique<ChartAxes>(m_axisX, m_axisY, m_grid, m_labels, zoomRect()))
    , m_room(std::make_unique<ChartRoom>(this, m_axes.get(), m_labels))
    , m_plots(std::make_unique<ChartPlots>(this, QVector<const QQuickItem *>{m_underlay, m_overlay}))
    , m_zoom(std::make_unique<ChartZoom>(this, m_axes.get()))
    , m_legendPlace(std::make_unique<ChartLegend>(this, m_legend, m_plots.get(), m_zoom.get()))
{
    setImplicitSize(defaultWidth, defaultHeight);
    setActiveFocusOnTab(true);
    m_labels->setZ(labelsZ);
    m_overlay->setZ(overlayZ);
    zoomRect()->setMinWidth(leastPart);
    zoomRect()->setMinHeight(leastPart);
    zoomRect()->setZoomAxis(Qt::Horizontal | Qt::Vertical);
    hear();
    applyColors();
}

void ChartView::hear()
{
    QObject *ears = m_ears.get();
    connect(m_export, &ChartExport::finished, this, &ChartView::exportFinished);
    connect(m_export, &ChartExport::progressChanged, this, &ChartView::exportProgressChanged);
    connect(m_theme.get(), &ThemeChoice::writtenChanged, this, &ChartView::themeChanged);
    connect(m_theme.get(), &ThemeChoice::changed, ears, [this] { applyColors(); });
    connect(m_room.get(), &ChartRoom::changed, ears, [this] { makeRoom(); });
    connect(m_axes.get(), &ChartAxes::axisDestroyed, m_plots.get(), &ChartPlots::lookLater);
    connect(m_plots.get(), &ChartPlots::changed, ears, [this] { wire(); });
    connect(m_plots.get(), &ChartPlots::dataChanged, m_zoom.get(), &ChartZoom::updateLater);
    connect(m_plots.get(), &ChartPlots::readingsChanged, ears, [this] { handlePlotVisibilityChanged(); });
    connect(m_plots.get(), &ChartPlots::plotDestroyed, ears, [this](AbstractPlot *plot) { dropPlot(plot); });
    connect(m_plots.get(), &ChartPlots::axisMade, ears,
            [this](ValueAxis *axis) { m_axes->adopt(axis, true); });
    connect(m_zoom.get(), &ChartZoom::followChanged, this, &ChartView::followChanged);
    connect(m_zoom.get(), &ChartZoom::followingChanged, this, &ChartView::followingChanged);
    connect(m_zoom.get(), &ChartZoom::historyChanged, this, &ChartView::historyChanged);
    connect(m_zoom.get(), &ChartZoom::touchedChanged, this, &ChartView::touchedChanged);
    connect(m_zoom.get(), &ChartZoom::aboutToUpdate, ears, [this] {
        m_axes->nameAfter(m_plots->traces(), size());
        shareBarRoom(plots());
    });
    connect(m_zoom.get(), &ChartZoom::updated, ears, [this] { finishUpdate(); });
    connect(this, &QQuickItem::visibleChanged, ears, [this] {
        m_zoom->updateLater();
        makeRoom();
    });
    connect(m_cursor, &CursorSwitches::posValueChanged, ears, [this] { shareCursor(); });
    connect(plotArea(), &QQuickItem::xChanged, ears, [this] { handleAreaChanged(); });
    connect(plotArea(), &QQuickItem::yChanged, ears, [this] { handleAreaChanged(); });
    connect(plotArea(), &QQuickItem::widthChanged, ears, [this] { handleAreaChanged(); });
    connect(plotArea(), &QQuickItem::heightChanged, ears, [this] { handleAreaChanged(); });
    connect(m_zoomSwitches, &ZoomSwitches::changed, ears, [this] {
        zoomRect()->setZoomAxis((m_zoomSwitches->horizontal() ? Qt::Horizontal : Qt::Orientations()) |
                                (m_zoomSwitches->vertical() ? Qt::Vertical : Qt::Orientations()));
    });
}

ChartView::~ChartView()
{
    m_ears.reset();
    const QList<ChartView *> former = partners();
    m_zoom->leavePartners();
    for (ChartView *chart : former)
        chart->makeOwnRoom();
    undressCursors(*this);
    // The traces belong to those who made them.
    const auto taken = plots();
    for (AbstractPlot *plot : taken)
        removePlot(plot);
    m_axes->leavePlots();
    leaveScene(this);
}

void ChartView::componentComplete()
{
    m_isComplete = true;
    m_zoom->complete();
    m_axes->gather(*this);
    // The view warns of axes that chose no plane, and of a view without any.
    QQmlListProperty<ValueAxis> list = axes();
    const QVector<ValueAxis *> gathered = m_axes->all();
    for (ValueAxis *axis : gathered)
        list.append(&list, axis);
    GraphView::componentComplete();
    // The planes announced their axes before the view listened.
    makeRoom();
    wire();
    m_zoom->begin();
}

void ChartView::itemChange(ItemChange change, const ItemChangeData &data)
{
    if (m_isComplete && change == ItemChildAddedChange) {
        m_plots->lookLater();
    } else if (m_isComplete && change == ItemChildRemovedChange) {
        m_children.remove(data.item);
        m_room->forgetScale(data.item);
        makeRoom();
        if (auto *plot = qobject_cast<AbstractPlot *>(data.item))
            letGo(plot);
        m_plots->lookLater();
    }
    GraphView::itemChange(change, data);
    if (change == ItemSceneChange && data.window)
        std::for_each(m_children.cbegin(), m_children.cend(), drawAsImage);
}

void ChartView::wire()
{
    m_plots->placeInstantiated();
    adoptNewChildren();
    const QVector<AbstractPlot *> found = m_plots->find();
    const QSet<const AbstractPlot *> present(found.begin(), found.end());
    const auto before = plots();
    for (AbstractPlot *plot : before) {
        if (!present.contains(plot))
            letGo(plot);
    }
    const auto kept = plots();
    QSet<const AbstractPlot *> taken(kept.begin(), kept.end());
    for (AbstractPlot *plot : found) {
        if (plot->parentItem() != this) {
            if (!hasSize(plot))
                stretch(plot, plot->parentItem());
            plot->setZoomRect(zoomRect());
        }
        if (!taken.contains(plot)) {
            taken.insert(plot);
            addPlot(plot);
        }
        if (m_plots->watch(plot))
            drawAsImage(plot);
        m_axes->giveTo(plot);
    }
    m_axes->gather(*this);
    m_bindingTexts->watch(plots(), m_axes->all());
    dressCursors();
    handlePlotVisibilityChanged();
    m_partColors.give(plots(), m_theme->theme());
    if (m_plots->setTraces(found)) {
        m_traceColors.give(m_plots->traces(), m_theme->theme());
        emit tracesChanged();
    }
    m_zoom->updateLater();
}

void ChartView::adoptNewChildren()
{
    const QList<QQuickItem *> children = childItems();
    for (QQuickItem *child : children) {
        if (!m_children.contains(child))
            adoptChild(child);
    }
}

void ChartView::adoptChild(QQuickItem *child)
{
    m_children.insert(child);
    drawAsImage(child);
    if (m_room->takeScale(child, m_theme->theme()))
        return;
    const bool isDrawn = qobject_cast<XYScale *>(child) || qobject_cast<AbstractPlot *>(child) ||
                         qobject_cast<GraphCursor *>(child);
    if (child == m_underlay)
        stretch(child, this);
    else if (child == plotArea() || child == m_overlay || isDrawn || (!hasSize(child) && !sizesItself(child)))
        GraphView::adoptChild(child);
    // Before the planes listen to it, which look at all plots when one has other axes.
    if (auto *plot = qobject_cast<AbstractPlot *>(child))
        m_axes->giveTo(plot);
}

// It has moved elsewhere.
void ChartView::letGo(AbstractPlot *plot)
{
    dropPlot(plot);
    m_axes->takeFrom(plot);
}

void ChartView::takePlots()
{
    m_plots->lookNow();
    m_zoom->update();
}

// The plot may be destroyed: then nothing but its address is used.
void ChartView::dropPlot(AbstractPlot *plot)
{
    m_plots->forget(plot);
    m_traceColors.forget(plot);
    if (hasPlot(plot)) {
        removePlot(plot);
        m_plots->unwatch(plot);
        handlePlotVisibilityChanged();
    }
    m_plots->lookLater();
}

/*!
    \qmlproperty string Chart::title
    A line of plain text above the plot area; empty by default, and without a title there is no room for one.
*/
void ChartView::setTitle(const QString &title)
{
    if (m_title == title)
        return;
    m_title = title;
    m_room->setTitled(!title.isEmpty());
    emit titleChanged();
    makeRoom();
}

/*!
    \qmlproperty var Chart::theme
    \c Chart.Dark (default), \c Chart.Light, or a ChartTheme. Anything else is the dark one.

    \qmlproperty ChartTheme Chart::colors
    \readonly
    The theme that is in use, for items of your own in the chart.
*/
void ChartView::setTheme(const QVariant &theme)
{
    m_theme->write(theme);
}

ChartTheme *ChartView::colors() const
{
    return m_theme->object();
}

/*!
    \qmlproperty Item Chart::plotArea
    \readonly
    The item that covers the plot area, between the axes: a parent for items of your own.

    \qmlproperty list<AbstractPlot> Chart::traces
    \readonly
    The plots of the chart in their order.

    \qmlproperty ChartAxis Chart::axisX
    \qmlproperty ChartAxis Chart::axisY
    \readonly
    The axes at the bottom and on the left, as groups: \c {axisX.unit: "s"}. An axis whose range the document
    writes keeps it; else it follows the data, as \c autoRange has it: ChartAxis.Fit unless the document says
    otherwise. Further axes are children of the chart.
*/
QVariantList ChartView::traces() const
{
    QVariantList traces;
    for (AbstractPlot *plot : m_plots->traces()) {
        if (plot)
            traces.append(QVariant::fromValue<QObject *>(plot));
    }
    return traces;
}

void ChartView::applyColors()
{
    m_axes->setTheme(m_theme->theme());
    m_traceColors.give(m_plots->traces(), m_theme->theme());
    m_partColors.give(plots(), m_theme->theme());
    m_room->setTheme(m_theme->theme());
    makeRoom();
    dressCursors();
    update();
    emit colorsChanged();
}

void ChartView::dressCursors()
{
    graph::dressCursors(*this, m_theme->theme(), [this](const ValueAxis *axis, double distance) {
        return distanceText(axis, distance);
    });
}

// What follows is here and not in the header: programs that call it do not see the parts of a chart.
QVariant ChartView::theme() const
{
    return m_theme->written();
}

double ChartView::follow() const
{
    return m_zoom->follow();
}

bool ChartView::isFollowing() const
{
    return m_zoom->isFollowing();
}

bool ChartView::canGoBack() const
{
    return m_zoom->canGoBack();
}

bool ChartView::canGoForward() const
{
    return m_zoom->canGoForward();
}

bool ChartView::isTouched() const
{
    return m_zoom->isTouched();
}

void ChartView::setFollow(double seconds)
{
    m_zoom->setFollow(seconds);
}

void ChartView::setFollowing(bool following)
{
    m_zoom->setFollowing(following);
}

void ChartView::setTouched(bool touched)
{
    m_zoom->setTouched(touched);
}

void ChartView::showAll()
{
    m_zoom->showAll();
}

void ChartView::showAllOf(Qt::Orientation orientation)
{
    m_zoom->showAllOf(orientation);
}

void ChartView::back()
{
    m_zoom->back();
}

void ChartView::forward()
{
    m_zoom->forward();
}

void ChartView::recordStep()
{
    m_zoom->recordStep();
}

void ChartView::zoomBeside(int side, double depth, double place, double factor)
{
    m_zoom->zoomBeside(side, depth, place, factor);
}

void ChartView::panBeside(int side, double depth, double distance)
{
    m_zoom->panBeside(side, depth, distance);
}

bool ChartView::canPanBeside(int side, double depth) const
{
    return m_zoom->canPanBeside(side, depth);
}

void ChartView::showRange(double from, double to)
{
    m_zoom->showRange(from, to);
}

void ChartView::showRangeY(double from, double to)
{
    m_zoom->showRangeY(from, to);
}

void ChartView::showRange(const QVariant &from, const QVariant &to)
{
    showRange(numberIn(from), numberIn(to));
}

void ChartView::showRangeY(const QVariant &from, const QVariant &to)
{
    showRangeY(numberIn(from), numberIn(to));
}

void ChartView::finishUpdate()
{
    placeWaitingCursors(*this);
    m_legendPlace->place();
}

/*!
    \qmlproperty Item Chart::underlay
    \qmlproperty Item Chart::overlay
    \qmlproperty ChartTexts Chart::bindingTexts
    \qmlproperty bool Chart::touched
    \qmlproperty size Chart::legendSize
    \qmlproperty Item Chart::legendBox
    \qmlproperty Item Chart::legendRow
    \qmlproperty bool Chart::titleShown
    \qmlproperty Item Chart::flickable
    \qmlmethod Chart::showAllOf(Qt::Orientation)
    \qmlmethod Chart::recordStep()
    \qmlmethod Chart::zoomBeside()
    \qmlmethod Chart::panBeside()
    \qmlmethod Chart::canPanBeside()
    \internal
*/
QSizeF ChartView::legendSize() const
{
    return m_legendPlace->size();
}

void ChartView::setLegendSize(const QSizeF &size)
{
    if (!m_legendPlace->setSize(size))
        return;
    emit legendSizeChanged();
    m_zoom->updateLater();
}

void ChartView::setLegendBox(QQuickItem *box)
{
    if (m_legendBox == box)
        return;
    m_legendBox = box;
    emit legendBoxChanged();
}

void ChartView::setLegendRow(QQuickItem *row)
{
    if (m_legendRow == row)
        return;
    m_legendRow = row;
    m_room->setLegendRow(row);
    emit legendRowChanged();
}

void ChartView::setFlickable(QQuickItem *flickable)
{
    if (m_flickable == flickable)
        return;
    m_flickable = flickable;
    zoomRect()->setFlickable(flickable);
    emit flickableChanged();
}

bool ChartView::isRead(const AbstractPlot &plot) const
{
    const auto *trace = qobject_cast<const Trace *>(&plot);
    return !isShading(plot) && (!trace || trace->hasReadings());
}

// Charts that share x have it at the same pixels.
QMargins ChartView::reservedMargins() const
{
    QMargins margins = m_room->own();
    const auto others = partners();
    for (const ChartView *chart : others) {
        if (!chart->isVisible())
            continue;
        const QMargins own = chart->m_room->own();
        const QMargins axes = chart->m_room->ofAxes();
        margins.setLeft(std::max({margins.left(), own.left(), axes.left()}));
        margins.setRight(std::max({margins.right(), own.right(), axes.right()}));
    }
    return margins;
}

void ChartView::makeRoom()
{
    makeOwnRoom();
    const auto others = partners();
    for (ChartView *chart : others)
        chart->makeOwnRoom();
}

void ChartView::makeOwnRoom()
{
    chooseRows();
    handleMarginsChanged();
    m_room->placeParts();
}

void ChartView::chooseRows()
{
    m_axes->setRows(m_room->rows(), m_room->hasRoomForUnits());
    if (store(m_isTitleShown, m_room->hasTitle()))
        emit titleShownChanged();
}

void ChartView::handleAreaChanged()
{
    chooseRows();
    update();
    m_room->placeParts();
    // Numbers of other axes, for instance, leave it another size, and the legend another corner.
    m_zoom->updateLater();
}

/*!
    \qmlmethod string Chart::formatX(real value)
    \qmlmethod string Chart::formatY(Item trace, real value)
    \qmlmethod string Chart::formatDifferenceY(Item trace, real difference)
    A value of axisX, and one of a trace, with its unit as readings show it: with the digits that neighbouring
    pixels need to differ, unless data have \c ySigDigs or \c yPrecision of their own, and in the unit of the axis where
    the trace has none. A \c formatter of the axis writes all of it. The difference of two values, such as the margin of
    a LimitLine, has a unit of its own where the values are levels: that of dBm, dBW, dBV and all others that begin with
    dB is dB. In a binding they are called again when the text may be another one.
*/
QString ChartView::formatX(double value) const
{
    return m_texts.position(*m_axisX, value);
}

QString ChartView::formatY(QQuickItem *trace, double value) const
{
    return m_texts.value(qobject_cast<AbstractPlot *>(trace), value);
}

QString ChartView::formatDifferenceY(QQuickItem *trace, double difference) const
{
    return m_texts.difference(qobject_cast<AbstractPlot *>(trace), difference);
}

QString ChartView::distanceText(const ValueAxis *axis, double distance) const
{
    const auto *chartAxis = qobject_cast<const ChartAxis *>(axis);
    if (!chartAxis)
        return formatX(distance);
    const bool hasDigitsOfLabels = chartAxis != m_axisX && chartAxis->scale() != ChartAxis::Time;
    return hasDigitsOfLabels ? chartAxis->differenceText(distance) : m_texts.distance(*chartAxis, distance);
}

/*!
    \qmlproperty Chart Chart::zoomWith
    Another chart, with which this one shares what is visible of axisX; null by default. Their plot areas begin and
    end equally far from their left and right sides, so that charts below each other have the same x at the same
    pixels, and their cursors are at the same x unless \c cursor.shared is false. More than two charts share it when each
    names one of the others.
*/
void ChartView::setZoomWith(ChartView *other)
{
    if (other && other == this)
        tell(this, QStringLiteral("is zoomed with itself: write zoomWith and the id of another chart"));
    if (zoomWith() == other || other == this)
        return;
    const QList<ChartView *> former = partners();
    m_zoom->joinWith(other ? other->m_zoom.get() : nullptr);
    makeRoom();
    for (ChartView *chart : former)
        chart->makeOwnRoom();
    m_zoom->updateLater();
    if (other)
        other->m_zoom->updateLater();
    emit zoomWithChanged();
    emit followingChanged();
}

ChartView *ChartView::zoomWith() const
{
    const ChartZoom *with = m_zoom->with();
    return with ? static_cast<ChartView *>(with->view()) : nullptr;
}

QList<ChartView *> ChartView::partners() const
{
    QList<ChartView *> charts;
    const auto partners = m_zoom->partners();
    for (const ChartZoom *zoom : partners)
        charts.append(static_cast<ChartView *>(zoom->view()));
    return charts;
}

// Those who are told snap to samples of their own, which moves nobody else.
void ChartView::shareCursor()
{
    if (m_isToldOfCursor || !m_cursor->isShared())
        return;
    const auto others = partners();
    for (ChartView *chart : others) {
        if (!chart->m_cursor->isShared())
            continue;
        chart->m_isToldOfCursor = true;
        chart->m_cursor->setPosValue(m_cursor->posValue());
        chart->m_isToldOfCursor = false;
    }
}

bool ChartView::paint(QPainter *painter, const QRectF &target)
{
    takePlots();
    if (!painter || !painter->isActive() || !isVisible() || size().isEmpty() || target.isEmpty()) {
        tell(this,
             QStringLiteral(
                 "is not painted: that takes a painter that has begun, a chart that is visible and has a "
                 "size, and a rectangle to paint into"));
        return false;
    }
    const double scale = std::min(target.width() / width(), target.height() / height());
    painter->save();
    painter->translate(target.center() - scale * QPointF(width(), height()) / 2.0);
    painter->scale(scale, scale);
    paintScene(this, {}, makePainterCanvas(painter).get());
    painter->restore();
    return true;
}

Backdrop ChartView::backdrop() const
{
    const QQuickItem *area = plotArea();
    return {boundingRect(), m_theme->theme().background(),
            area ? QRectF(area->position(), area->size()) : QRectF(), m_theme->theme().plotBackground()};
}

QSGNode *ChartView::updatePaintNode(QSGNode *node, UpdatePaintNodeData *)
{
    return backdrop().node(node, window());
}

} // namespace graph
