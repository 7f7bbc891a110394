#include "kit/chart/ChartView.h"

#include "kit/axis/ChartAxis.h"
#include "kit/chart/ChartTheme.h"
#include "kit/chart/CursorSwitches.h"
#include "kit/chart/LegendSwitches.h"
#include "kit/chart/PlottedData.h"
#include "kit/data/Store.h"
#include "kit/data/Telling.h"
#include "view/base/AbstractPlot.h"
#include "view/base/XYScale.h"
#include "view/zoom/ZoomRect.h"

#include <QDateTime>

#include <algorithm>

// What of the axes is visible, how it follows the data, and the zooms that led there.

namespace graph {

namespace {

Span visibleSpan(const ValueAxis *axis)
{
    return Span{axis->minVisible(), axis->maxVisible()}.ordered();
}

// The part of the axis' full range, as a begin and an extent; everything without a span.
Span partOf(const ValueAxis *axis, const std::optional<Span> &span)
{
    const Scale scale = axis->axisRange().fullScale();
    const Span part =
        span ? Span{scale.fraction(span->from), scale.fraction(span->to)}.ordered() : Span{0.0, 1.0};
    return part.isFinite() ? part : Span{0.0, 1.0};
}

// What is shown of an axis after a change of the rectangle. A flickable that is touched moves its content to
// a whole pixel: as long as the length is the same that is no change.
std::optional<Span> spanShown(const ValueAxis *axis, double part, const std::optional<Span> &before,
                              double pixels)
{
    constexpr double nearlyAll = 1.0 - 1e-9;
    constexpr double noMove = 0.75; // of a pixel
    const Span now = visibleSpan(axis);
    const double resized = before ? std::abs(now.length() - before->length()) : 0.0;
    if (before && resized <= 1e-9 * now.length() &&
        std::abs(now.from - before->from) <= noMove * now.length() / std::max(1.0, pixels))
        return before;
    return part < nearlyAll ? std::make_optional(now) : std::nullopt;
}

} // namespace

void ChartView::updateRangesLater()
{
    if (m_rangesPending || !m_ears)
        return;
    m_rangesPending = true;
    QMetaObject::invokeMethod(
        m_ears.get(), [this] { updateRanges(); }, Qt::QueuedConnection);
}

// What the document does not say of them follows from their traces.
void ChartView::nameAxes()
{
    // A small chart needs the room.
    const int size = m_colors->fontSize();
    const bool hasRoom = width() >= size * 25 && height() >= size * 12;
    QVector<const AbstractPlot *> only;
    for (FittedAxis &fitted : m_axes) {
        fitted.takeUnit(m_traces);
        only.append(fitted.onlyTrace(m_traces));
        fitted.takeTitle(hasRoom ? only.last() : nullptr);
    }
    const bool hasSeveral = only.size() - only.count(nullptr) > 1;
    for (std::size_t i = 0; i < m_axes.size(); ++i) {
        if (auto *axis = qobject_cast<ChartAxis *>(m_axes[i].axis()))
            axis->setTitleColor(hasSeveral && only.at(int(i)) ? only.at(int(i))->penColor() : QColor());
    }
}

void ChartView::updateRanges()
{
    m_rangesPending = false;
    if (!m_complete || !isVisible())
        return;
    if (m_touched || zoomRect()->isMoving()) {
        fitWhileMoved();
        return;
    }
    nameAxes();
    const PlottedData plotted(plots(), &m_leastPositive);
    const Span oldX = std::exchange(m_dataX, plotted.along(m_axisX, false));
    followNewData(oldX);
    const bool wasApplying = std::exchange(m_applying, true);
    const bool wasChanging = zoomRect()->setChanging(true);
    fitAxes(Qt::Horizontal, plotted);
    const Span x = partOf(m_axisX, m_shown.x);
    zoomRect()->show(QRectF(x.from, zoomRect()->top(), x.length(), zoomRect()->height()));
    // What a vertical axis fits may be what is visible.
    fitAxes(Qt::Vertical, plotted);
    const Span y = partOf(m_axisY, m_shown.y);
    zoomRect()->show(QRectF(x.from, y.from, x.length(), y.length()));
    zoomRect()->setChanging(wasChanging);
    m_applying = wasApplying;
    m_grid->setVisible(!plotted.fill(m_axisX) && !plotted.fill(m_axisY));
    placeCursors();
    placeLegend();
    if (oldX != m_dataX) {
        const auto others = partners();
        for (ChartView *chart : others)
            chart->updateRangesLater();
    }
}

void ChartView::placeLegend()
{
    if (m_legend->isPlaced() || m_follow > 0.0)
        return;
    const auto corner = m_legendPlace.find(m_traces, plotArea()->size(), m_legendSize);
    if (corner)
        m_legend->setDefaultCorner(corner->atRight, corner->atBottom);
}

void ChartView::setLegendSize(const QSizeF &size)
{
    if (!store(m_legendSize, size))
        return;
    emit legendSizeChanged();
    updateRangesLater();
}

// What is shown of x, now that the data have changed.
void ChartView::followNewData(const Span &oldX)
{
    // Other data than those that were zoomed into.
    if (m_shown.x && m_follow == 0.0 && m_shown.x->meets(oldX) && !m_dataX.isEmpty() &&
        !m_shown.x->meets(m_dataX))
        m_shown.x.reset();
    if (!m_shown.following)
        return;
    const Span all = groupSpanX();
    const double seconds = followedSeconds();
    if (all.isEmpty())
        m_shown.x = awaitedSpan(seconds);
    else
        m_shown.x =
            all.length() < seconds ? Span{all.from, all.from + seconds} : Span{all.to - seconds, all.to};
}

void ChartView::fitAxes(Qt::Orientation orientation, const PlottedData &plotted)
{
    for (FittedAxis &fitted : m_axes) {
        if (fitted.axis() && fitted.axis()->orientation() == orientation)
            fit(fitted, plotted);
    }
}

FittedAxis::Look ChartView::lookAt(const FittedAxis &axis, const PlottedData &plotted) const
{
    FittedAxis::Look look{plotted, m_clock.elapsed(), {}, {}, followedSeconds() <= 0.0};
    if (axis.axis() == m_axisX) {
        look.data = groupSpanX();
        look.shown = m_shown.x;
    } else if (axis.axis() == m_axisY) {
        look.shown = m_shown.y;
    }
    return look;
}

void ChartView::fit(FittedAxis &axis, const PlottedData &plotted)
{
    if (axis.fit(lookAt(axis, plotted)) && !m_fitTimer.isActive())
        m_fitTimer.start();
}

void ChartView::fitWhileMoved()
{
    const PlottedData plotted(plots(), &m_leastPositive);
    const bool wasApplying = std::exchange(m_applying, true);
    for (FittedAxis &fitted : m_axes) {
        if (fitted.axis())
            fitted.fitWhileMoved(lookAt(fitted, plotted));
    }
    m_applying = wasApplying;
}

// Charts that share x show the data of all of them.
Span ChartView::groupSpanX() const
{
    Span span = m_dataX;
    const auto others = partners();
    for (const ChartView *chart : others)
        span = span.united(chart->m_dataX);
    return span;
}

/*!
    \qmlmethod void Chart::showRange(real from, real to)
    \qmlmethod void Chart::showRangeY(real from, real to)
    Shows that part of axisX or axisY, in their units and in one step; the ends may come in either order, and
    may lie beyond the data. Without effect, but with a line in the category \c graph.kit, where an end is no
    number, or both are the same. Holds a chart that follows its data.
*/
void ChartView::showRange(double from, double to)
{
    if (isRange("showRange", from, to))
        showState({Span{from, to}.ordered(), m_shown.y, false}, true);
}

void ChartView::showRangeY(double from, double to)
{
    if (isRange("showRangeY", from, to))
        showState({m_shown.x, Span{from, to}.ordered(), m_shown.following}, true);
}

bool ChartView::isRange(const char *method, double from, double to) const
{
    if (Span{from, to}.isFinite() && from != to)
        return true;
    tellOnce(this, method,
             QStringLiteral("ignores %1(%2, %3), which is no range: write two numbers that differ")
                 .arg(QLatin1String(method))
                 .arg(from)
                 .arg(to));
    return false;
}

/*!
    \qmlmethod void Chart::showAll()
    Shows all of the data in both directions.

    \qmlmethod void Chart::back()
    \qmlmethod void Chart::forward()
    Through the zooms: each showRange(), box or other gesture, and a series of turns of the wheel, is one
    step.

    \qmlproperty bool Chart::canGoBack
    \qmlproperty bool Chart::canGoForward
    \readonly
    Whether there is such a step.
*/
void ChartView::showAll()
{
    for (FittedAxis &fitted : m_axes)
        fitted.leaveToData();
    showState({}, true);
}

void ChartView::showAllOf(Qt::Orientation orientation)
{
    for (FittedAxis &fitted : m_axes) {
        if (fitted.axis() && fitted.axis()->orientation() == orientation)
            fitted.leaveToData();
    }
    ZoomState state = m_shown;
    (orientation == Qt::Horizontal ? state.x : state.y).reset();
    state.following = state.following && orientation == Qt::Vertical;
    showState(state, true);
}

void ChartView::back()
{
    recordStep();
    if (!m_history.canGoBack())
        return;
    showState(m_history.goBack(), false);
    emit historyChanged();
}

void ChartView::forward()
{
    recordStep();
    if (!m_history.canGoForward())
        return;
    showState(m_history.goForward(), false);
    emit historyChanged();
}

void ChartView::showState(const ZoomState &state, bool asStep)
{
    if (asStep)
        recordStep();
    const bool wasFollowing = m_shown.following;
    m_shown = state;
    // A finger that rests on the chart does not keep it from what it is told to show.
    const bool wasTouched = std::exchange(m_touched, false);
    updateRanges();
    m_touched = wasTouched;
    if (asStep)
        recordStep();
    if (wasFollowing != m_shown.following)
        emit followingChanged();
    tellPartners();
}

// The user's doing, or that of a cursor or a document that moves the rectangle.
void ChartView::handleRectChanged()
{
    if (m_applying || !m_complete)
        return;
    const ZoomState before = m_shown;
    m_shown.x = spanShown(m_axisX, zoomRect()->width(), before.x, plotArea()->width());
    m_shown.y = spanShown(m_axisY, zoomRect()->height(), before.y, plotArea()->height());
    // Turning the wheel over the vertical axis does not hold a chart that follows.
    m_shown.following = before.following && m_shown.x == before.x;
    m_stepTimer.start();
    emit historyChanged();
    if (before.following != m_shown.following)
        emit followingChanged();
    if (before.x == m_shown.x)
        return;
    // An axis may fit what is visible.
    updateRangesLater();
    tellPartners();
}

void ChartView::zoomBeside(int side, double depth, double place, double factor)
{
    ZoomRect *rect = zoomRect();
    const bool isX = side == Qt::AlignTop || side == Qt::AlignBottom;
    const double anchor = isX ? rect->left() + place * rect->width() : rect->top() + place * rect->height();
    if (FittedAxis *further = furtherAxis(side, depth))
        moveAxis(*further, anchor, factor, 0.0);
    else if (isX)
        rect->zoomX(rect->width() * factor, anchor);
    else
        rect->zoomY(rect->height() * factor, anchor);
}

void ChartView::panBeside(int side, double depth, double distance)
{
    ZoomRect *rect = zoomRect();
    const bool isX = side == Qt::AlignTop || side == Qt::AlignBottom;
    const double moved = distance * (isX ? rect->width() : rect->height());
    if (FittedAxis *further = furtherAxis(side, depth))
        moveAxis(*further, 0.0, 1.0, moved);
    else if (isX)
        rect->moveLeft(rect->left() + moved);
    else
        rect->moveTop(rect->top() + moved);
}

// The axis there, unless it is one of the first ones, which the zoom rectangle is for.
FittedAxis *ChartView::furtherAxis(int side, double depth)
{
    double edge = 0.0;
    for (FittedAxis &fitted : m_axes) {
        const ValueAxis *axis = fitted.axis();
        if (!axis || int(axis->alignment()) != side || !axis->visible())
            continue;
        edge += axis->margin();
        if (depth < edge)
            return axis == m_axisX || axis == m_axisY ? nullptr : &fitted;
    }
    return nullptr;
}

// The zoom rectangle is for all axes: one alone is moved by another full range under it.
void ChartView::moveAxis(FittedAxis &axis, double anchor, double factor, double distance)
{
    if (!axis.moveByHand(anchor, factor, distance))
        return;
    const bool wasApplying = std::exchange(m_applying, true);
    fit(axis, PlottedData(plots(), &m_leastPositive));
    m_applying = wasApplying;
}

void ChartView::recordStep()
{
    m_stepTimer.stop();
    if (m_history.add(m_shown))
        emit historyChanged();
}

void ChartView::setTouched(bool touched)
{
    if (m_touched == touched)
        return;
    // What came before is a step of its own.
    if (touched)
        recordStep();
    m_touched = touched;
    emit touchedChanged();
    if (!touched)
        updateRangesLater();
}

void ChartView::setFlickable(QQuickItem *flickable)
{
    if (m_flickable == flickable)
        return;
    m_flickable = flickable;
    zoomRect()->setFlickable(flickable);
    emit flickableChanged();
}

/*!
    \qmlproperty real Chart::follow
    The width of a window, in units of axisX, that rolls with the newest data; 0, the default, for none. Until
    there is that much data the window waits for it.

    \qmlproperty bool Chart::following
    Whether the window rolls. Panning, zooming and showRange() hold it; write true, or press the button in the
    corner, to go on.
*/
void ChartView::setFollow(double seconds)
{
    if (!(seconds >= 0.0) || !std::isfinite(seconds)) {
        tellOnce(
            this, "follow",
            QStringLiteral("has a follow of %1, which is ignored: write the seconds that it is to show, or 0")
                .arg(seconds));
        return;
    }
    if (m_follow == seconds)
        return;
    const bool starts = m_follow == 0.0;
    m_follow = seconds;
    emit followChanged();
    // New data come in at the right.
    m_legend->setDefaultCorner(seconds == 0.0, false);
    if (seconds == 0.0)
        setFollowing(false);
    else if (starts)
        setFollowing(true);
    else if (m_shown.following)
        updateRanges();
}

void ChartView::setFollowing(bool following)
{
    if (m_shown.following == following)
        return;
    if (following && followedSeconds() <= 0.0) {
        // The window may be written later in the same document.
        QMetaObject::invokeMethod(
            m_ears.get(), [this] { tellOfNoWindow(); }, Qt::QueuedConnection);
        return;
    }
    ZoomState state = m_shown;
    state.following = following;
    showState(state, m_complete);
}

void ChartView::tellOfNoWindow()
{
    if (followedSeconds() <= 0.0)
        tellOnce(this, "following",
                 QStringLiteral(
                     "has no window that could follow its data: write follow and the seconds that it is to "
                     "show"));
}

// What a window shows that has no data yet.
Span ChartView::awaitedSpan(double seconds) const
{
    if (m_axisX->scale() != ChartAxis::Time)
        return {0.0, seconds};
    const double now = QDateTime::currentMSecsSinceEpoch() / 1000.0;
    return {now - seconds, now};
}

double ChartView::followedSeconds() const
{
    double seconds = m_follow;
    const auto others = partners();
    for (const ChartView *chart : others)
        seconds = std::max(seconds, chart->m_follow);
    return seconds;
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
    if (m_zoomWith == other || other == this)
        return;
    const QList<ChartView *> former = partners();
    if (m_zoomWith)
        m_zoomWith->m_zoomedWithThis.removeAll(this);
    m_zoomWith = other;
    if (other) {
        other->m_zoomedWithThis.append(this);
        m_shown.x = other->m_shown.x;
        if (m_shown.following != other->m_shown.following)
            m_shown.following = !m_shown.following;
    }
    makeRoom();
    for (ChartView *chart : former)
        chart->makeOwnRoom();
    updateRangesLater();
    if (other)
        other->updateRangesLater();
    emit zoomWithChanged();
    emit followingChanged();
}

// For those who are left.
void ChartView::leavePartners()
{
    const QList<ChartView *> former = partners();
    if (m_zoomWith)
        m_zoomWith->m_zoomedWithThis.removeAll(this);
    m_zoomWith.clear();
    for (ChartView *chart : qAsConst(m_zoomedWithThis)) {
        if (chart)
            chart->m_zoomWith.clear();
    }
    m_zoomedWithThis.clear();
    for (ChartView *chart : former)
        chart->makeOwnRoom();
}

// All that are joined with this one, directly or through others.
QList<ChartView *> ChartView::partners() const
{
    if (!m_zoomWith && m_zoomedWithThis.isEmpty())
        return {};
    QList<ChartView *> found{const_cast<ChartView *>(this)};
    for (int i = 0; i < found.size(); ++i) {
        auto next = found.at(i)->m_zoomedWithThis;
        next.append(found.at(i)->m_zoomWith);
        for (ChartView *chart : qAsConst(next)) {
            if (chart && !found.contains(chart))
                found.append(chart);
        }
    }
    return found.mid(1);
}

void ChartView::tellPartners()
{
    const auto others = partners();
    for (ChartView *chart : others) {
        if (chart->m_shown.x == m_shown.x && chart->m_shown.following == m_shown.following)
            continue;
        const bool wasFollowing = std::exchange(chart->m_shown.following, m_shown.following);
        chart->m_shown.x = m_shown.x;
        chart->updateRanges();
        chart->m_stepTimer.start();
        if (wasFollowing != m_shown.following)
            emit chart->followingChanged();
    }
}

// Those who are told snap to samples of their own, which moves nobody else.
void ChartView::shareCursor()
{
    if (m_isToldOfCursor || !m_cursorSwitches->isShared())
        return;
    const auto others = partners();
    for (ChartView *chart : others) {
        if (!chart->m_cursorSwitches->isShared())
            continue;
        chart->m_isToldOfCursor = true;
        chart->m_cursorSwitches->setPosValue(m_cursorSwitches->posValue());
        chart->m_isToldOfCursor = false;
    }
}

} // namespace graph
