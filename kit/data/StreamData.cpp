#include "kit/data/StreamData.h"

#include "kit/data/ItemName.h"
#include "kit/data/KitLog.h"
#include "kit/data/NumberList.h"
#include "kit/data/Store.h"
#include "kit/data/StreamBuffer.h"
#include "kit/data/Telling.h"

#include <QDateTime>
#include <QCoreApplication>
#include <QThread>
#include <QTimerEvent>

#include <utility>

namespace graph {

namespace {

const auto pushEvent = QEvent::Type(QEvent::registerEventType());

// After so many times, samples that keep coming are taken every few milliseconds, which is several times a
// frame.
constexpr int takesInARow = 8;
constexpr int takeInterval = 4;

} // namespace

StreamData::StreamData(QObject *parent)
    : SampledData(parent)
{
    // Before anybody else hears of the samples. At each of them, what reads the size would cost more than the samples.
    connect(this, &PlotData::plotChanged, this, [this] { tellProperties(); });
    // Or another announcement would follow this one.
    disconnect(this, SIGNAL(sizeChanged(int)), this, SLOT(emitPlotChanged()));
}

void StreamData::setCapacity(int capacity)
{
    if (!isOnOwnThread("setCapacity()"))
        return;
    if (capacity < 1) {
        tellOnce(
            this, "capacity",
            QStringLiteral("has a capacity of %1, which is ignored: write how many samples it is to keep")
                .arg(capacity));
        return;
    }
    capacity = bounded(this, "capacity", capacity, 1, StreamBuffer<double>::greatestCapacity);
    if (capacity == this->capacity())
        return;
    const SampleHistory former = history();
    resizeStore(capacity);
    emit capacityChanged();
    announce(former);
}

void StreamData::setHeld(bool held)
{
    if (m_held == held || !isOnOwnThread("setHeld()"))
        return;
    const SampleHistory former = history();
    m_held = held;
    freeze(held);
    emit heldChanged();
    announce(former);
}

void StreamData::clear()
{
    if (!isOnOwnThread("clear()"))
        return;
    const SampleHistory former = history();
    clearStore();
    announce(former);
}

void StreamData::announce(const SampleHistory &former)
{
    if (!history().isSame(former))
        emitPlotChanged();
}

void StreamData::tellProperties()
{
    if (store(m_toldSize, size()))
        emit sizeChanged(m_toldSize);
}

bool StreamData::event(QEvent *event)
{
    if (event->type() != pushEvent)
        return SampledData::event(event);
    takeAndAnnounce();
    m_takes = 0;
    m_takeTimer.start(0, this);
    return true;
}

// While samples keep coming they are looked for instead of announced: a thread that never pauses would
// announce them faster than the application can answer, and nothing else would have its turn.
void StreamData::timerEvent(QTimerEvent *event)
{
    if (event->timerId() != m_takeTimer.timerId()) {
        SampledData::timerEvent(event);
        return;
    }
    if (takeAndAnnounce()) {
        if (++m_takes == takesInARow)
            m_takeTimer.start(takeInterval, Qt::PreciseTimer, this);
        return;
    }
    m_takeTimer.stop();
    // What is pushed from here on is announced again; what came just before, by nobody.
    m_pushAnnounced.exchange(false);
    takeAndAnnounce();
}

bool StreamData::takeAndAnnounce()
{
    const SampleHistory former = history();
    const bool any = takePushed();
    announce(former);
    return any;
}

QVector<double> StreamData::numbersOf(const QJSValue &values)
{
    if (values.isNumber())
        return {values.toNumber()};
    if (values.isDate())
        return {double(values.toDateTime().toMSecsSinceEpoch()) / 1000.0};
    const auto numbers = numberList(this, "samples", QVariant::fromValue(values));
    if (!numbers)
        tellOnce(
            this, "list",
            QStringLiteral("is given samples that are no list, and ignores them: write append([1, 2, 3])"));
    return numbers.value_or(QVector<double>());
}

bool StreamData::isOnOwnThread(const char *call)
{
    if (QThread::currentThread() == thread())
        return true;
    // From where documents can be asked for the object's name and place.
    if (!m_foreignCallTold.exchange(true))
        QMetaObject::invokeMethod(
            this,
            [this, call] {
                tell(this,
                     QStringLiteral(
                         "gets %1 from another thread, and ignores it: that thread may call push(), and "
                         "anything else through QMetaObject::invokeMethod()")
                         .arg(QLatin1String(call)));
            },
            Qt::QueuedConnection);
    return false;
}

bool StreamData::admitPush(int count)
{
    if (count <= 0)
        return false;
    if (m_pusher.admit())
        return true;
    if (!m_refusalTold.exchange(true))
        qCWarning(kitLog).nospace() << typeNameOf(this)
                                    << ": push() from a second thread is refused while the first one lives";
    return false;
}

void StreamData::announcePush()
{
    if (!m_pushAnnounced.exchange(true))
        QCoreApplication::postEvent(this, new QEvent(pushEvent));
}

void StreamData::countDropped(qint64 count)
{
    m_dropped += count;
    emit droppedChanged();
}

} // namespace graph
