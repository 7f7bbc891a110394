#include "kit/data/StreamSeries.h"

#include "common/SafeInteger.h"
#include "kit/data/NumberList.h"
#include "kit/data/ServedPlace.h"

#include <QEvent>

#include <cmath>

namespace graph {

/*!
    \qmltype StreamSeries
    \inherits PlotData
    \inqmlmodule graph_kit
    \brief Live samples, equally spaced in x: new ones are appended, and beyond the capacity the oldest fall
    out.

    \image rolling.png The last ten seconds of a series

    Appending costs the samples that are appended, however many there are. So does a frame of a chart that
    rolls over them, beside its pixels. plotChanged(), sizeChanged() and startChanged() tell of all that was
    appended in one pass of the event loop.

    \code
    StreamSeries { id: level; capacity: 720000; interval: 0.005 }
    // in a handler, or in C++
    level.append(values)
    \endcode

    In C++ a thread that measures calls \c {push(const double *values, int count)}. It neither waits nor
    locks; the object takes the samples on its own thread, in order, when the event loop comes to it, which is
    before the next frame. One thread may push at a time; another one may when that has ended, and is refused
    before, with one line in \c graph.kit. The last push has to be over when the object is destroyed.

    \qmlproperty int StreamSeries::capacity
    How many samples are kept, 1 to 1073741824; 100000 by default. Memory is taken for those that there are:
    8.5 bytes each. A smaller capacity drops the oldest at once. Less than 1 is ignored, with a line in \c
    graph.kit.

    \qmlproperty bool StreamSeries::held
    While true all that can be read stays as it is: size, start and samples. Data go on arriving meanwhile,
    and on release all of it is there, as far as the capacity reaches. Takes the memory of a second series at
    most. False by default.

    \qmlproperty int StreamSeries::dropped
    \readonly
    How many pushed samples were lost because the application took none over for too long, while 1048576
    others came. The oldest are lost. Those that follow keep their x; a NaN in the place of each lost one
    leaves a gap.

    \qmlmethod void StreamSeries::clear()
    Forgets all samples. The next one has the x that \c start was given last.
*/
StreamSeries::StreamSeries(QObject *parent)
    : StreamData(parent)
{
}

StreamSeries::StreamSeries(double interval, int capacity, QObject *parent)
    : StreamSeries(parent)
{
    setInterval(interval);
    setCapacity(capacity);
}

// Not limited to the samples that there are; -1 for none, or without a spacing.
int StreamSeries::indexOf(double x) const
{
    const double position = (x - m_countedX) / m_interval - double(shown().number - m_countedFrom);
    if (shown().size == 0 || m_interval == 0.0 || std::isnan(position))
        return -1;
    return roundedIndex(position);
}

SampleSpan StreamSeries::allSamples() const
{
    SampleSpan span(shown().stretch(double(m_countedFrom)), m_countedX, m_interval);
    span.setPyramid(shown().pyramid());
    return span;
}

/*!
    \qmlproperty string StreamSeries::dbusAddress
    As \l PlotData::dbusAddress, and the array \c yData. Where a service appends to it, what came is appended
    here: the capacity is that of the series, not that of the service. An array that is sent as a whole
    replaces the samples. Where they are in x is what the service says (its items \c xFirsValue, of the first element
    of its array, and \c xIncrement), unless \c start or \c interval is written.
*/
void StreamSeries::setDbusAddress(const QString &address)
{
    StreamData::setDbusAddress(address);
    if (!BusBinding::isAddress(address))
        return;
    connectOrnVecDoubleItem(QStringLiteral("yData"), [this](const QVector<double> &array, int appended) {
        const SampleHistory former = history();
        if (appended < 0)
            clearStore();
        const int count = appended < 0 ? array.size() : std::min(appended, int(array.size()));
        appendLive(array.constData() + (array.size() - count), count);
        m_servedSize = array.size();
        if (appended < 0)
            takeServedPlace();
        announce(former);
    });
    connectOrnItem(QStringLiteral("xIncrement"));
    connectOrnItem(QStringLiteral("xFirsValue"));
}

bool StreamSeries::event(QEvent *event)
{
    if (event->type() == QEvent::DynamicPropertyChange) {
        const SampleHistory former = history();
        takeServedPlace();
        announce(former);
    }
    return StreamData::event(event);
}

bool StreamSeries::hasInterval() const
{
    return m_hasInterval || !std::isnan(servedInterval(*this, std::numeric_limits<double>::quiet_NaN()));
}

// By the service's whole array, of which this series may have kept more or less.
void StreamSeries::takeServedPlace()
{
    if (!m_hasInterval)
        applyInterval(servedInterval(*this, m_interval));
    const double first = servedStart(*this, std::numeric_limits<double>::quiet_NaN());
    if (m_hasStart || std::isnan(first))
        return;
    const StreamView<double> &live = m_live.view();
    const qint64 number = live.number + live.size - m_servedSize;
    constexpr double rounding = 1e-6; // of an interval
    if (std::abs(xOf(number) - first) <= rounding * std::abs(m_interval))
        return;
    m_countedX = first;
    m_countedFrom = number;
    emitPlotChanged();
}

/*!
    \qmlproperty double StreamSeries::interval
    The distance in x from one sample to the next, in units of x; negative where samples come from right to left. A change keeps the x of the
    oldest sample. Default: 1, or what a service says. With 0 all samples are at one x; with NaN or an infinity nothing is drawn.
*/
void StreamSeries::setInterval(double interval)
{
    if (!isOnOwnThread("setInterval()"))
        return;
    m_hasInterval = true;
    applyInterval(interval);
}

void StreamSeries::applyInterval(double interval)
{
    if (m_interval == interval || (std::isnan(m_interval) && std::isnan(interval)))
        return;
    const double first = start();
    m_countedX = std::isfinite(first) ? first : m_writtenStart;
    m_countedFrom = shown().number;
    m_interval = interval;
    emit intervalChanged();
    emitPlotChanged();
}

/*!
    \qmlproperty var StreamSeries::start
    The x of the oldest sample, in units of x, or a date, of which it takes the seconds since 1970. It moves on as samples fall out; writing it moves all samples.
    Default: 0, or what a service says.
*/
void StreamSeries::setStart(double start)
{
    if (!isOnOwnThread("setStart()"))
        return;
    m_hasStart = true;
    m_writtenStart = start;
    if (this->start() == start)
        return;
    m_countedX = start;
    m_countedFrom = shown().number;
    m_toldStart = start;
    emit startChanged();
    emitPlotChanged();
}

void StreamSeries::setStart(const QVariant &start)
{
    if (const auto x = numberOf(this, "start", start))
        setStart(*x);
}

/*!
    \qmlmethod void StreamSeries::append(list<real> values)
    Adds samples at the end: a list, a typed array or a single number. NaN is a gap, and so is what is no
    number. Of more than the capacity the last ones are kept. What is no list is ignored, the first time with a line in
    \c graph.kit.
*/
void StreamSeries::append(const QJSValue &values)
{
    append(numbersOf(values));
}

void StreamSeries::append(const double *values, int count)
{
    if (!isOnOwnThread("append()"))
        return;
    const SampleHistory former = history();
    appendLive(values, count);
    announce(former);
}

void StreamSeries::appendLive(const double *values, int count)
{
    if (count > 0)
        m_live.append(count, [values](double *to, int first, int n) {
            std::copy(values + first, values + first + n, to);
        });
}

void StreamSeries::push(const double *values, int count)
{
    if (!admitPush(count))
        return;
    m_pushed.push(count, [values](qint64 i) { return values[i]; });
    announcePush();
}

bool StreamSeries::takePushed()
{
    return m_pushed.take([this](const double *values, int count) { appendLive(values, count); },
                         [this](qint64 count) {
                             m_live.skip(count, std::numeric_limits<double>::quiet_NaN());
                             countDropped(count);
                         });
}

void StreamSeries::tellProperties()
{
    StreamData::tellProperties();
    const bool isSame = m_toldStart == start() || (std::isnan(m_toldStart) && std::isnan(start()));
    m_toldStart = start();
    if (!isSame)
        emit startChanged();
}

void StreamSeries::clearStore()
{
    m_live.clear();
    m_countedX = m_writtenStart;
    m_countedFrom = 0;
    freeze(isHeld());
}

void StreamSeries::freeze(bool frozen)
{
    m_frozen = frozen ? m_live.view() : StreamView<double>();
}

} // namespace graph
