#include "kit/data/StreamPoints.h"

#include "kit/data/Telling.h"

#include <cmath>
#include <limits>
#include <numeric>

namespace graph {

/*!
    \qmltype StreamPoints
    \inherits PlotData
    \inqmlmodule graph_kit
    \brief Live points with an x and a y of their own: new ones are appended, and beyond the capacity the
    oldest fall out.

    \image rolling.png Points look like this, too, where they come at equal distances

    \code
    StreamPoints { id: track; capacity: 50000 }
    // in a handler, or in C++
    track.append([3.2, 3.9], [11.8, 12.1])
    \endcode

    As \l StreamSeries, for samples that do not come at equal distances. Appending costs what is appended as
    long as x ascends; while points are kept that run backwards, all are sorted for each change. Points whose
    x is NaN are not drawn.

    In C++ one thread may call \c {push(const double *xs, const double *ys, int count)}.

    \qmlproperty int StreamPoints::capacity
    How many points are kept, 1 to 1073741824; 100000 by default. As \l StreamSeries::capacity, at 16.5 bytes
    each.

    \qmlproperty bool StreamPoints::held
    While true all that can be read stays as it is, see \l StreamSeries::held. False by default.

    \qmlproperty int StreamPoints::dropped
    \readonly
    How many pushed points were lost, see \l StreamSeries::dropped. Nothing takes their place.

    \qmlmethod void StreamPoints::clear()
    Forgets all points.
*/
StreamPoints::StreamPoints(QObject *parent)
    : StreamData(parent)
{
}

StreamPoints::StreamPoints(int capacity, QObject *parent)
    : StreamPoints(parent)
{
    setCapacity(capacity);
}

SampleSpan StreamPoints::allSamples() const
{
    if (!isAscending())
        return SampleSpan(sorted().points, sorted().indices);
    SampleSpan span(shown().stretch());
    span.setPyramid(shown().pyramid());
    return span;
}

const StreamPoints::Sorted &StreamPoints::sorted() const
{
    if (m_sorted.history.isSame(history()))
        return m_sorted;
    const QPointF *points = shown().samples();
    QVector<int> order(shown().size);
    std::iota(order.begin(), order.end(), 0);
    const auto end = std::stable_partition(order.begin(), order.end(),
                                           [points](int i) { return !std::isnan(points[i].x()); });
    std::stable_sort(order.begin(), end, [points](int a, int b) { return points[a].x() < points[b].x(); });
    order.erase(end, order.end());
    m_sorted = {history(), QVector<QPointF>(order.size()), order};
    std::transform(order.cbegin(), order.cend(), m_sorted.points.begin(),
                   [points](int i) { return points[i]; });
    return m_sorted;
}

/*!
    \qmlproperty string StreamPoints::dbusAddress
    As \l PlotData::dbusAddress, and the arrays \c xData and \c yData. Elements that a service appends to both
    are appended here; arrays that are sent as a whole replace the points.
*/
void StreamPoints::setDbusAddress(const QString &address)
{
    StreamData::setDbusAddress(address);
    if (!BusBinding::isAddress(address))
        return;
    m_waitingX.clear();
    m_waitingY.clear();
    connectOrnVecDoubleItem(QStringLiteral("xData"), [this](const QVector<double> &array, int appended) {
        takeCoordinate(m_waitingX, array, appended);
    });
    connectOrnVecDoubleItem(QStringLiteral("yData"), [this](const QVector<double> &array, int appended) {
        takeCoordinate(m_waitingY, array, appended);
    });
}

// A coordinate waits for the other one. One that replaces makes all begin again, and both services' arrays
// then start at the same point.
void StreamPoints::takeCoordinate(QVector<double> &waiting, const QVector<double> &array, int appended)
{
    const SampleHistory former = history();
    if (appended < 0) {
        if (shown().size > 0 || !waiting.isEmpty()) {
            clearStore();
            m_waitingX.clear();
            m_waitingY.clear();
        }
        waiting = array;
    } else {
        waiting += array.mid(array.size() - appended);
    }
    const int count = std::min(m_waitingX.size(), m_waitingY.size());
    appendLive(count, [&](qint64 i) { return QPointF(m_waitingX.at(int(i)), m_waitingY.at(int(i))); });
    m_waitingX.remove(0, count);
    m_waitingY.remove(0, count);
    announce(former);
}

/*!
    \qmlmethod void StreamPoints::append(list<real> xs, list<real> ys)
    Adds points at the end: lists, typed arrays or single numbers; of lists of different lengths the shorter
    one counts, the first time with a line in \c graph.kit. An x or a y that is NaN is a gap. Without ys nothing is added, and
    there is such a line, too.
*/
void StreamPoints::append(const QJSValue &xs, const QJSValue &ys)
{
    if (ys.isUndefined()) {
        tellOnce(this, "ys",
                 QStringLiteral(
                     "is given one list to append, and ignores it: write append(xs, ys), with an x for each "
                     "value, or use a StreamSeries"));
        return;
    }
    const QVector<double> x = numbersOf(xs);
    const QVector<double> y = numbersOf(ys);
    if (x.size() != y.size() && !x.isEmpty() && !y.isEmpty())
        tellOnce(
            this, "lengths",
            QStringLiteral("is given %1 x and %2 y, of which the shorter list counts: append as many of both")
                .arg(x.size())
                .arg(y.size()));
    append(x.constData(), y.constData(), std::min(x.size(), y.size()));
}

void StreamPoints::append(const double *xs, const double *ys, int count)
{
    if (!isOnOwnThread("append()"))
        return;
    const SampleHistory former = history();
    appendLive(count, [xs, ys](qint64 i) { return QPointF(xs[i], ys[i]); });
    announce(former);
}

template <typename At> void StreamPoints::appendLive(int count, At at)
{
    if (count <= 0)
        return;
    const StreamView<QPointF> &view = m_live.view();
    constexpr double none = std::numeric_limits<double>::quiet_NaN();
    double last = view.size > 0 ? view.samples()[view.size - 1].x() : none;
    m_live.append(count, [&at, &last](QPointF *to, int first, int n) {
        for (int i = 0; i < n; ++i) {
            const QPointF point = at(first + i);
            // Without an x it is a gap behind the one before.
            to[i] = std::isnan(point.x()) ? QPointF(last, none) : point;
            last = to[i].x();
        }
    });
    // Each new point and the one before it.
    const int first = std::max(view.size - count - 1, 0);
    for (int i = first; i < view.size; ++i) {
        const double x = view.samples()[i].x();
        if (std::isnan(x))
            m_fallEnd = view.number + i + 1;
        else if (i > first && view.samples()[i - 1].x() > x)
            m_fallEnd = view.number + i;
    }
}

void StreamPoints::push(const double *xs, const double *ys, int count)
{
    if (!admitPush(count))
        return;
    m_pushed.push(count, [xs, ys](qint64 i) { return QPointF(xs[i], ys[i]); });
    announcePush();
}

bool StreamPoints::takePushed()
{
    return m_pushed.take([this](const QPointF *points,
                                int count) { appendLive(count, [points](qint64 i) { return points[i]; }); },
                         [this](qint64 count) { countDropped(count); });
}

void StreamPoints::resizeStore(int capacity)
{
    m_live.setCapacity(capacity);
}

void StreamPoints::clearStore()
{
    m_live.clear();
    m_fallEnd = 0;
    freeze(isHeld());
}

void StreamPoints::freeze(bool frozen)
{
    m_frozen = frozen ? m_live.view() : StreamView<QPointF>();
}

} // namespace graph
