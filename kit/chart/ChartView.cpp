#include "kit/chart/ChartView.h"

#include "cursors/GraphCursor.h"
#include "kit/axis/ChartAxis.h"
#include "kit/chart/ChartExport.h"
#include "kit/chart/ChartTheme.h"
#include "kit/chart/CursorSwitches.h"
#include "kit/chart/LegendSwitches.h"
#include "kit/chart/ZoomSwitches.h"
#include "kit/plots/ColorScale.h"
#include "view/base/AbstractPlot.h"
#include "view/base/XYScale.h"
#include "view/zoom/ZoomRect.h"

#include <QPainter>
#include <QQuickWindow>
#include <QSGRectangleNode>

#include <algorithm>

namespace graph {

namespace {

// The part of the extent that a zoom can show: small enough for ten samples of a day, and so large that
// moving it by a pixel is no matter of rounding.
constexpr double leastPart = 1e-8;
constexpr double defaultWidth = 400.0;
constexpr double defaultHeight = 240.0;
constexpr double labelsZ = 1.0;
constexpr double overlayZ = 3.0;
// Pauses that are longer separate two zooms for back().
constexpr int stepPause = 400;

} // namespace

/*!
    \qmltype Chart
    \inqmlmodule graph_kit
    \inherits GraphView
    \brief A chart that needs nothing but its traces.

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

    Without a size it is 400 by 240 pixels. Items that have a size of their own stay where they are; others
    are stretched over the plot area.
*/
ChartView::ChartView(QQuickItem *parent)
    : GraphView(parent)
    , m_theme(int(Dark))
    , m_darkTheme(ChartTheme::dark(this))
    , m_lightTheme(ChartTheme::light(this))
    , m_axisX(new ChartAxis(this))
    , m_axisY(new ChartAxis(this))
    , m_legend(new LegendSwitches(this))
    , m_cursorSwitches(new CursorSwitches(this))
    , m_zoom(new ZoomSwitches(this))
    , m_grid(new XYScale(this))
    , m_labels(new XYScale(this))
    , m_underlay(new QQuickItem(this))
    , m_overlay(new QQuickItem(this))
    , m_export(new ChartExport(this))
{
    connect(m_export, SIGNAL(finished(QString, QString)), this, SIGNAL(exportFinished(QString, QString)));
    connect(m_export, SIGNAL(progressChanged()), this, SIGNAL(exportProgressChanged()));
    m_clock.start();
    setImplicitSize(defaultWidth, defaultHeight);
    setActiveFocusOnTab(true);
    m_labels->setZ(labelsZ);
    m_overlay->setZ(overlayZ);
    m_axisX->setAlignment(Qt::AlignBottom);
    m_axisY->setAlignment(Qt::AlignLeft);
    zoomRect()->setMinWidth(leastPart);
    zoomRect()->setMinHeight(leastPart);
    zoomRect()->setZoomAxis(Qt::Horizontal | Qt::Vertical);
    adoptAxis(m_axisX, true);
    adoptAxis(m_axisY, true);
    m_stepTimer.setSingleShot(true);
    m_stepTimer.setInterval(stepPause);
    m_fitTimer.setSingleShot(true);
    m_fitTimer.setInterval(LingeringSpan::period);
    QObject *ears = m_ears.get();
    connect(&m_stepTimer, &QTimer::timeout, ears, [this] {
        if (m_touched || zoomRect()->isMoving())
            m_stepTimer.start();
        else
            recordStep();
    });
    connect(m_axisX, &ChartAxis::scaleChanged, ears, [this] { makeRoom(); });
    connect(&m_fitTimer, &QTimer::timeout, ears, [this] { updateRanges(); });
    connect(zoomRect(), &ZoomRect::rectChanged, ears, [this] { handleRectChanged(); });
    connect(zoomRect(), &ZoomRect::movingChanged, ears, [this] { updateRangesLater(); });
    connect(this, &QQuickItem::visibleChanged, ears, [this] {
        updateRangesLater();
        makeRoom();
    });
    connect(m_cursorSwitches, &CursorSwitches::posValueChanged, ears, [this] { shareCursor(); });
    connect(m_labels, &XYScale::marginsChanged, ears, [this] { makeRoom(); });
    connect(plotArea(), &QQuickItem::xChanged, ears, [this] { handleAreaChanged(); });
    connect(plotArea(), &QQuickItem::yChanged, ears, [this] { handleAreaChanged(); });
    connect(plotArea(), &QQuickItem::widthChanged, ears, [this] { handleAreaChanged(); });
    connect(plotArea(), &QQuickItem::heightChanged, ears, [this] { handleAreaChanged(); });
    connect(m_zoom, &ZoomSwitches::changed, ears, [this] {
        zoomRect()->setZoomAxis((m_zoom->horizontal() ? Qt::Horizontal : Qt::Orientations()) |
                                (m_zoom->vertical() ? Qt::Vertical : Qt::Orientations()));
    });
    setTheme(int(Dark));
    applyColors();
}

ChartView::~ChartView()
{
    m_ears.reset();
    leavePartners();
    const QList<QQuickItem *> children = childItems();
    for (QQuickItem *child : children) {
        if (auto *cursor = qobject_cast<GraphCursor *>(child))
            cursor->setLook({});
    }
    // The traces belong to those who made them.
    const auto taken = plots();
    for (AbstractPlot *plot : taken)
        removePlot(plot);
}

/*!
    \qmlmethod bool Chart::exportImage(string file, real scale = 1)
    Writes a picture of the chart to a path or file URL that ends with .png, .svg or .pdf: the chart as it is
    now, as large as it is times scale (at most 16384 pixels each way). SVG and PDF hold lines and texts, not
    pixels. Gives whether it began; exportFinished() tells the end in any case. Another thread writes the file,
    which appears complete or not at all.

    \qmlmethod bool Chart::exportData(string file, bool all = false)
    Writes the samples of the visible traces as CSV to a path or file URL that ends with .csv, those in the visible
    range of x or all: a line of names
    with units, then a line for each sample. Traces at the same x share a column of it. Numbers have points and
    are exact in every locale; a gap is an empty field. Begins and ends like exportImage().

    \qmlmethod void Chart::cancelExport()
    Ends all exports that go on, without files.

    \qmlsignal Chart::exportFinished(string file, string error)
    The error is empty when the file is there, or else a sentence, which is also in the log (category \c
    graph.kit) unless the export was cancelled.

    \qmlproperty real Chart::exportProgress
    \readonly
    From 0 to 1 while exports go on, 1 otherwise.
*/
double ChartView::exportProgress() const
{
    return m_export->progress();
}

bool ChartView::exportImage(const QString &file, double scale)
{
    return m_export->exportImage(file, scale);
}

bool ChartView::exportData(const QString &file, bool all)
{
    return m_export->exportData(file, all);
}

void ChartView::cancelExport()
{
    m_export->cancel();
}

/*!
    \qmlproperty ZoomSwitches Chart::zoom
    What gestures, wheel and keys may do, by its switches: false in \c zoom.vertical keeps all of y in view.

    \qmlproperty CursorSwitches Chart::cursor
    The cursor that a tap or the mouse brings, by its switches.

    \qmlproperty LegendSwitches Chart::legend
    The list of traces, by its switches.

    \qmlproperty Item Chart::underlay
    \qmlproperty Item Chart::overlay
    \qmlproperty bool Chart::touched
    \qmlproperty size Chart::legendSize
    \qmlproperty Item Chart::flickable
    \qmlmethod Chart::showAllOf(Qt::Orientation)
    \qmlmethod Chart::recordStep()
    \qmlmethod Chart::zoomBeside()
    \qmlmethod Chart::panBeside()
    \internal
*/
/*!
    \qmltype ZoomSwitches
    \brief What the user's hand may do to a Chart, its `zoom`.

    \qmlproperty bool ZoomSwitches::enabled
    Anything at all; true by default, as all of these.

    \qmlproperty bool ZoomSwitches::horizontal
    \qmlproperty bool ZoomSwitches::vertical
    Along x and along y.

    \qmlproperty bool ZoomSwitches::box
    Zoom to a box with the right button or a long press.

    \qmlproperty bool ZoomSwitches::axes
    Gestures over an axis, which move only that axis.

    \qmlproperty bool ZoomSwitches::keys
    The keyboard.
*/
/*!
    \qmltype CursorSwitches
    \brief The cursor that a Chart has of its own, its `cursor`.

    \qmlproperty bool CursorSwitches::enabled
    Whether there is one; true by default, as all of these.

    \qmlproperty bool CursorSwitches::hover
    Whether it follows the mouse, not only taps.

    \qmlproperty bool CursorSwitches::readings
    Whether the values at the cursor are shown.

    \qmlproperty bool CursorSwitches::shared
    Whether it is at the same x in all charts that are joined by \c zoomWith and have this true.

    \qmlproperty real CursorSwitches::posValue
    The x of the cursor, or of the ChartCursor that the document declares, in units of the data; NaN, the default, while
    none is shown. Writing it brings the cursor to the sample next to it, as soon as there are samples, and NaN takes the
    chart's own one away.
*/
/*!
    \qmltype LegendSwitches
    \brief The list of traces in a Chart, its `legend`.

    \qmlproperty bool LegendSwitches::enabled
    Whether there is one; true by default. A chart that is small both ways, below about 400 by 300 pixels, needs
    the room for its traces and shows none.

    \qmlproperty int LegendSwitches::leastTraces
    With how many traces it appears; 2 by default.

    \qmlproperty bool LegendSwitches::atRight
    \qmlproperty bool LegendSwitches::atBottom
    Its corner of the plot area. By default the first one in which it covers no trace, beginning with the upper
    right one: it is chosen when traces get their first data, and when the size of the chart or of the legend changes.
    With \c follow it is the upper left one.

    \qmlproperty bool LegendSwitches::inARow
    Its names beside each other instead of below each other.

    \qmlproperty bool LegendSwitches::values
    Whether it tells the values at the cursor.

    \qmlproperty bool LegendSwitches::newest
    Whether it tells the newest values, those of the last samples, while there is no cursor; false by default.
*/
/*!
    \qmlproperty string Chart::title
    Above the plot area; empty by default, and without a title there is no room for one.
*/
void ChartView::setTitle(const QString &title)
{
    if (m_title == title)
        return;
    m_title = title;
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
    auto *own = qobject_cast<ChartTheme *>(theme.value<QObject *>());
    ChartTheme *colors = own ? own : theme.toInt() == Light ? m_lightTheme : m_darkTheme;
    if (m_theme != theme) {
        m_theme = theme;
        emit themeChanged();
    }
    if (m_colors == colors)
        return;
    if (m_colors)
        disconnect(m_colors, nullptr, m_ears.get(), nullptr);
    m_colors = colors;
    connect(colors, &ChartTheme::changed, m_ears.get(), [this] { applyColors(); });
    connect(colors, &QObject::destroyed, m_ears.get(), [this, colors] {
        if (colors != m_darkTheme && colors != m_lightTheme)
            setTheme(int(Dark));
    });
    applyColors();
}

ChartTheme *ChartView::colors() const
{
    return m_colors;
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
    for (AbstractPlot *plot : m_traces) {
        if (plot)
            traces.append(QVariant::fromValue<QObject *>(plot));
    }
    return traces;
}

void ChartView::applyColors()
{
    for (const FittedAxis &fitted : m_axes) {
        if (fitted.axis())
            applyColors(fitted.axis());
    }
    m_traceColors.give(m_traces, *m_colors);
    m_scales.setTheme(*m_colors);
    makeRoom();
    dressCursors();
    update();
    emit colorsChanged();
}

void ChartView::applyColors(ValueAxis *axis)
{
    axis->setLineColor(m_colors->gridColor());
    axis->setLineWidth(m_colors->gridWidth());
    axis->setLabelColor(m_colors->textColor());
    axis->setLabelFont(m_colors->font());
    if (auto *chartAxis = qobject_cast<ChartAxis *>(axis))
        chartAxis->setMinorGridColor(m_colors->minorGridColor());
    axis->emitAxisChanged();
}

// Charts that share x have it at the same pixels.
QMargins ChartView::reservedMargins() const
{
    QMargins margins = ownMargins();
    const auto others = partners();
    for (const ChartView *chart : others) {
        if (!chart->isVisible())
            continue;
        const QMargins own = chart->ownMargins();
        const QMargins axes = chart->m_labels->margins();
        margins.setLeft(std::max({margins.left(), own.left(), axes.left()}));
        margins.setRight(std::max({margins.right(), own.right(), axes.right()}));
    }
    return margins;
}

QMargins ChartView::ownMargins() const
{
    const int size = m_colors ? m_colors->fontSize() : 0;
    // A unit goes above the numbers of its axis.
    const auto hasUnitAbove = [](const FittedAxis &fitted) {
        const auto *axis = qobject_cast<const ChartAxis *>(fitted.axis());
        return axis && axis->orientation() == Qt::Vertical && axis->visible() && !axis->unit().isEmpty() &&
               axis->title().isEmpty();
    };
    const bool hasUnit = std::any_of(m_axes.begin(), m_axes.end(), hasUnitAbove);
    const int top = !m_title.isEmpty() ? size * 5 / 2 : hasUnit ? size * 9 / 4 : size;
    // With the axes between them and the plot area.
    const int scales = m_scales.width(this);
    const int right = scales == 0 ? 0 : m_labels->margins().right() + size / 2 + scales;
    // The last number is below its tick, half of it beyond the plot area; times are longer.
    const int half = m_axisX && m_axisX->scale() == ChartAxis::Time ? size * 9 / 4 : size * 3 / 2;
    return {size, top, std::max(half, right), size / 2};
}

void ChartView::handleAreaChanged()
{
    update();
    placeScales();
}

// Whether the child is one that the chart places.
bool ChartView::adoptScale(QQuickItem *child)
{
    auto *scale = qobject_cast<ColorScale *>(child);
    if (!scale || !m_scales.take(scale, *m_colors))
        return false;
    QObject *ears = m_ears.get();
    connect(scale, &QQuickItem::implicitWidthChanged, ears, [this] { makeRoom(); });
    connect(scale, &QQuickItem::visibleChanged, ears, [this] { makeRoom(); });
    connect(scale, &QObject::destroyed, ears, [this] { makeRoom(); });
    makeRoom();
    return true;
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
    handleMarginsChanged();
    placeScales();
}

void ChartView::placeScales()
{
    const QQuickItem *area = plotArea();
    if (area)
        m_scales.place(this, QRectF(area->position(), area->size()),
                       area->x() + area->width() + m_labels->margins().right());
}

/*!
    \qmlmethod string Chart::formatX(real value)
    \qmlmethod string Chart::formatY(Item trace, real value)
    A value of axisX, and one of a trace, with its unit as readings show it.
*/
QString ChartView::formatX(double value) const
{
    return m_texts.position(*m_axisX, value);
}

QString ChartView::formatY(QQuickItem *trace, double value) const
{
    return ReadingTexts::value(qobject_cast<AbstractPlot *>(trace), value);
}

// Between a cursor and a marker on any axis.
QString ChartView::distanceText(const ValueAxis *axis, double distance) const
{
    const auto *chartAxis = qobject_cast<const ChartAxis *>(axis);
    if (!chartAxis)
        return formatX(distance);
    const bool hasDigitsOfLabels = chartAxis != m_axisX && chartAxis->scale() != ChartAxis::Time;
    return hasDigitsOfLabels ? chartAxis->valueText(distance) : m_texts.distance(*chartAxis, distance);
}

void ChartView::paintBackdrop(QPainter *painter) const
{
    painter->fillRect(QRectF(0.0, 0.0, width(), height()), m_colors->background());
    if (const QQuickItem *area = plotArea())
        painter->fillRect(QRectF(area->position(), area->size()), m_colors->plotBackground());
}

// The same for the screen.
QSGNode *ChartView::updatePaintNode(QSGNode *node, UpdatePaintNodeData *)
{
    if (!node) {
        node = new QSGNode;
        node->appendChildNode(window()->createRectangleNode());
        node->appendChildNode(window()->createRectangleNode());
    }
    const auto paint = [](QSGNode *child, const QRectF &rect, const QColor &color) {
        auto *rectangle = static_cast<QSGRectangleNode *>(child);
        rectangle->setRect(rect);
        rectangle->setColor(color);
    };
    const QQuickItem *area = plotArea();
    const QRectF plotRect = area ? QRectF(area->x(), area->y(), area->width(), area->height()) : QRectF();
    paint(node->firstChild(), boundingRect(), m_colors->background());
    paint(node->lastChild(), plotRect, m_colors->plotBackground());
    return node;
}

} // namespace graph
