#include "kit/chart/ChartZoom.h"

#include "kit/axis/ChartAxis.h"
#include "kit/chart/ChartAxes.h"
#include "kit/chart/PlottedData.h"
#include "kit/chart/RollingWindow.h"
#include "kit/chart/VisibleSpan.h"
#include "kit/data/Telling.h"
#include "view/base/AbstractPlot.h"
#include "view/frame/GraphView.h"
#include "view/zoom/ZoomRect.h"

#include <algorithm>

namespace graph {

namespace {

// Pauses that are longer separate two zooms for back().
constexpr int stepPause = 400;

Span usable(const Span &written)
{
    const Span ordered = written.ordered();
    return {std::max(ordered.from, -farthestEnd), std::min(ordered.to, farthestEnd)};
}

} // namespace

ChartZoom::ChartZoom(GraphView *view, ChartAxes *axes)
    : m_view(view)
    , m_axes(axes)
{
    m_stepTimer.setSingleShot(true);
    m_stepTimer.setInterval(stepPause);
    connect(&m_stepTimer, &QTimer::timeout, this, [this] {
        if (m_isTouched || rect()->isMoving())
            m_stepTimer.start();
        else
            recordStep();
    });
    connect(axes, &ChartAxes::fitDue, this, &ChartZoom::update);
    connect(rect(), &ZoomRect::rectChanged, this, &ChartZoom::handleRectChanged);
    connect(rect(), &ZoomRect::movingChanged, this, &ChartZoom::updateLater);
    connect(axes, &ChartAxes::rangeWritten, this, &ChartZoom::updateLater);
}

ZoomRect *ChartZoom::rect() const
{
    return m_view->zoomRect();
}

void ChartZoom::begin()
{
    update();
    m_history = ZoomHistory(m_shown);
}

void ChartZoom::updateLater()
{
    if (m_isPending)
        return;
    m_isPending = true;
    QMetaObject::invokeMethod(
        this, [this] { update(); }, Qt::QueuedConnection);
}

void ChartZoom::update()
{
    m_isPending = false;
    if (!m_isComplete || !m_view->isVisible())
        return;
    if (m_isTouched || rect()->isMoving()) {
        m_axes->fitWhileMoved(lookAt(PlottedData(m_view->plots(), &m_leastPositive)));
        return;
    }
    emit aboutToUpdate();
    const PlottedData plotted(m_view->plots(), &m_leastPositive);
    const Span oldX = std::exchange(m_dataX, plotted.along(m_axes->x(), false));
    const double oldReachX = std::exchange(m_reachX, plotted.reachBeyond(m_axes->x()));
    followNewData(oldX);
    const bool wasFitting = m_axes->setFitting(true);
    const bool wasChanging = rect()->setChanging(true);
    m_axes->fit(Qt::Horizontal, lookAt(plotted));
    const Span x = partOf(m_axes->x(), m_shown.x);
    rect()->show(QRectF(x.from, rect()->top(), x.length(), rect()->height()));
    // What a vertical axis fits may be what is visible.
    m_axes->fit(Qt::Vertical, lookAt(plotted));
    const Span y = partOf(m_axes->y(), m_shown.y);
    rect()->show(QRectF(x.from, y.from, x.length(), y.length()));
    rect()->setChanging(wasChanging);
    m_axes->setFitting(wasFitting);
    m_axes->setGridVisible(!plotted.fill(m_axes->x()) && !plotted.fill(m_axes->y()));
    emit updated();
    if (oldX != m_dataX || oldReachX != m_reachX) {
        const auto others = partners();
        for (ChartZoom *other : others)
            other->updateLater();
    }
}

// What is shown of x, now that the data have changed.
void ChartZoom::followNewData(const Span &oldX)
{
    // Other data than those that were zoomed into; what a held window shows may also fall out of a stream that goes on.
    if (m_shown.x && m_shown.x->meets(oldX) && !m_dataX.isEmpty() && !m_shown.x->meets(m_dataX) &&
        (m_follow == 0.0 || !oldX.meets(m_dataX)))
        m_shown.x.reset();
    if (m_shown.following)
        m_shown.x = rollingWindow(groupSpanX(), followedSeconds(), m_axes->x()->scale() == ChartAxis::Time);
}

ChartAxes::Look ChartZoom::lookAt(const PlottedData &plotted) const
{
    double reachX = m_reachX;
    const auto others = partners();
    for (const ChartZoom *other : others)
        reachX = std::max(reachX, other->m_reachX);
    return {plotted, m_shown, groupSpanX(), reachX, followedSeconds() <= 0.0};
}

// Charts that share x show the data of all of them.
Span ChartZoom::groupSpanX() const
{
    Span span = m_dataX;
    const auto others = partners();
    for (const ChartZoom *other : others)
        span = span.united(other->m_dataX);
    return span;
}

double ChartZoom::newestPlace() const
{
    const Span data = groupSpanX();
    const ValueAxis *axis = m_axes->x();
    return data.isEmpty() ? 0.0 : (data.to - axis->minVisible()) / (axis->maxVisible() - axis->minVisible());
}

/*!
    \qmlmethod void Chart::showRange(var from, var to)
    \qmlmethod void Chart::showRangeY(var from, var to)
    Shows that part of axisX or axisY, in their units or between two dates, and in one step; the ends may come in either order, and
    may lie beyond the data. Without effect, but with a line in the category \c graph.kit, where an end is no
    number, or both are the same. Holds a chart that follows its data.
*/
void ChartZoom::showRange(double from, double to)
{
    if (isRange("showRange", *m_axes->x(), from, to))
        showState({usable({from, to}), m_shown.y, false}, true);
}

void ChartZoom::showRangeY(double from, double to)
{
    if (isRange("showRangeY", *m_axes->y(), from, to))
        showState({m_shown.x, usable({from, to}), m_shown.following}, true);
}

bool ChartZoom::isRange(const char *method, const ChartAxis &axis, double from, double to) const
{
    if (Span{from, to}.isFinite() && from != to) {
        const Span shown = usable({from, to});
        if (axis.scale() == ChartAxis::Logarithmic && shown.from <= 0.0)
            tellOnce(m_view, method,
                     QStringLiteral(
                         "is told %1(%2, %3) on a logarithmic axis, which shows the part above 0: write "
                         "numbers above 0")
                         .arg(QLatin1String(method))
                         .arg(from)
                         .arg(to));
        if (!(shown == Span{from, to}.ordered()))
            tellOnce(m_view, method,
                     QStringLiteral("is told %1(%2, %3), which counts as %4 to %5: write numbers in between")
                         .arg(QLatin1String(method))
                         .arg(from)
                         .arg(to)
                         .arg(shown.from)
                         .arg(shown.to));
        return true;
    }
    tellOnce(m_view, method,
             QStringLiteral("ignores %1(%2, %3), which is no range: write two finite numbers that "
                            "differ, or showAll()")
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
void ChartZoom::showAll()
{
    m_axes->leaveToData(Qt::Horizontal | Qt::Vertical);
    showState({}, true);
}

void ChartZoom::showAllOf(Qt::Orientation orientation)
{
    m_axes->leaveToData(orientation);
    ZoomState state = m_shown;
    (orientation == Qt::Horizontal ? state.x : state.y).reset();
    state.following = state.following && orientation == Qt::Vertical;
    showState(state, true);
}

void ChartZoom::back()
{
    recordStep();
    if (!m_history.canGoBack())
        return;
    showState(m_history.goBack(), false);
    emit historyChanged();
}

void ChartZoom::forward()
{
    recordStep();
    if (!m_history.canGoForward())
        return;
    showState(m_history.goForward(), false);
    emit historyChanged();
}

void ChartZoom::showState(const ZoomState &state, bool asStep)
{
    if (asStep)
        recordStep();
    const bool wasFollowing = m_shown.following;
    m_shown = state;
    // A finger that rests on the chart does not keep it from what it is told to show.
    const bool wasTouched = std::exchange(m_isTouched, false);
    update();
    m_isTouched = wasTouched;
    if (asStep)
        recordStep();
    if (wasFollowing != m_shown.following)
        emit followingChanged();
    tellPartners();
}

// The user's doing, or that of a cursor or a document that moves the rectangle.
void ChartZoom::handleRectChanged()
{
    if (m_axes->isFitting() || !m_isComplete)
        return;
    const ZoomState before = m_shown;
    m_shown.x = spanShown(m_axes->x(), rect()->width(), before.x, m_view->plotArea()->width());
    m_shown.y = spanShown(m_axes->y(), rect()->height(), before.y, m_view->plotArea()->height());
    // Turning the wheel over the vertical axis does not hold a chart that follows.
    m_shown.following = before.following && m_shown.x == before.x;
    m_stepTimer.start();
    emit historyChanged();
    if (before.following != m_shown.following)
        emit followingChanged();
    if (before.x == m_shown.x)
        return;
    // An axis may fit what is visible.
    updateLater();
    tellPartners();
}

void ChartZoom::zoomBeside(int side, double depth, double place, double factor)
{
    const bool isX = side == Qt::AlignTop || side == Qt::AlignBottom;
    const double anchor =
        isX ? rect()->left() + place * rect()->width() : rect()->top() + place * rect()->height();
    if (moveBeside(side, depth, anchor, factor, 0.0))
        return;
    if (isX)
        rect()->zoomX(rect()->width() * factor, anchor);
    else
        rect()->zoomY(rect()->height() * factor, anchor);
}

void ChartZoom::panBeside(int side, double depth, double distance)
{
    const bool isX = side == Qt::AlignTop || side == Qt::AlignBottom;
    const double moved = distance * (isX ? rect()->width() : rect()->height());
    if (moveBeside(side, depth, 0.0, 1.0, moved))
        return;
    if (isX)
        rect()->moveLeft(rect()->left() + moved);
    else
        rect()->moveTop(rect()->top() + moved);
}

bool ChartZoom::canPanBeside(int side, double depth) const
{
    const bool isX = side == Qt::AlignTop || side == Qt::AlignBottom;
    return m_axes->furtherBeside(side, depth) || (isX ? rect()->width() : rect()->height()) < 1.0;
}

// The zoom rectangle is for all axes: one alone is moved by another full range under it. False without such an axis.
bool ChartZoom::moveBeside(int side, double depth, double anchor, double factor, double distance)
{
    FittedAxis *axis = m_axes->furtherBeside(side, depth);
    if (axis && axis->moveByHand(anchor, factor, distance))
        m_axes->fit(*axis, lookAt(PlottedData(m_view->plots(), &m_leastPositive)));
    return axis;
}

void ChartZoom::recordStep()
{
    m_stepTimer.stop();
    if (m_history.add(m_shown))
        emit historyChanged();
}

void ChartZoom::setTouched(bool touched)
{
    if (m_isTouched == touched)
        return;
    // What came before is a step of its own.
    if (touched)
        recordStep();
    m_isTouched = touched;
    emit touchedChanged();
    if (!touched)
        updateLater();
}

/*!
    \qmlproperty real Chart::follow
    The width of a window, in units of axisX, that rolls with the newest data; 0, the default, for none. Until
    there is that much data the window waits for it.

    \qmlproperty bool Chart::following
    Whether the window rolls. Panning, zooming and showRange() hold it; write true, or press the button in the
    corner, to go on. Before there are data, false shows all of them as they come.
*/
void ChartZoom::setFollow(double seconds)
{
    if (!(seconds >= 0.0) || !std::isfinite(seconds)) {
        tellOnce(
            m_view, "follow",
            QStringLiteral("has a follow of %1, which is ignored: write the seconds that it is to show, or 0")
                .arg(seconds));
        return;
    }
    if (m_follow == seconds)
        return;
    const bool starts = m_follow == 0.0;
    m_follow = seconds;
    emit followChanged();
    if (seconds == 0.0)
        setFollowing(false);
    else if (starts && !m_isHeldFirst)
        setFollowing(true);
    else if (m_shown.following)
        update();
}

void ChartZoom::setFollowing(bool following)
{
    // Also where a document writes it before the window.
    if (!m_isComplete)
        m_isHeldFirst = !following;
    if (m_shown.following == following)
        return;
    if (following && followedSeconds() <= 0.0) {
        // The window may be written later in the same document.
        QMetaObject::invokeMethod(
            this, [this] { tellOfNoWindow(); }, Qt::QueuedConnection);
        return;
    }
    ZoomState state = m_shown;
    state.following = following;
    // A window that waits for data is none of theirs.
    if (!following && groupSpanX().isEmpty())
        state.x.reset();
    showState(state, m_isComplete);
}

void ChartZoom::tellOfNoWindow()
{
    if (followedSeconds() <= 0.0)
        tellOnce(m_view, "following",
                 QStringLiteral(
                     "has no window that could follow its data: write follow and the seconds that it is to "
                     "show"));
}

double ChartZoom::followedSeconds() const
{
    double seconds = m_follow;
    const auto others = partners();
    for (const ChartZoom *other : others)
        seconds = std::max(seconds, other->m_follow);
    return seconds;
}

void ChartZoom::joinWith(ChartZoom *other)
{
    m_joined.joinWith(other ? &other->m_joined : nullptr);
    if (!other)
        return;
    m_shown.x = other->m_shown.x;
    if (m_shown.following != other->m_shown.following)
        m_shown.following = !m_shown.following;
}

void ChartZoom::tellPartners()
{
    const auto others = partners();
    for (ChartZoom *other : others) {
        if (other->m_shown.x == m_shown.x && other->m_shown.following == m_shown.following)
            continue;
        const bool wasFollowing = std::exchange(other->m_shown.following, m_shown.following);
        other->m_shown.x = m_shown.x;
        other->update();
        other->m_stepTimer.start();
        if (wasFollowing != m_shown.following)
            emit other->followingChanged();
    }
}

} // namespace graph
