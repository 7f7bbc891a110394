#include "kit/data/StreamData.h"

#include "kit/data/KitLog.h"
#include "kit/data/NumberList.h"
#include "kit/data/StreamBuffer.h"

#include <QCoreApplication>
#include <QEvent>

namespace graph {

namespace {

const auto pushEvent = QEvent::Type(QEvent::registerEventType());

} // namespace

StreamData::StreamData(QObject *parent)
    : SampledData(parent)
{
}

void StreamData::setCapacity(int capacity)
{
    if (capacity < 1) {
        qCWarning(kitLog).nospace() << metaObject()->className() << ": a capacity of " << capacity
                                    << " samples is ignored, it is 1 at least";
        return;
    }
    capacity = std::min(capacity, StreamBuffer<double>::greatestCapacity);
    if (capacity == this->capacity())
        return;
    const Appearance former = appearance();
    resizeStore(capacity);
    emit capacityChanged();
    announce(former);
}

void StreamData::setHeld(bool held)
{
    if (m_held == held)
        return;
    const Appearance former = appearance();
    m_held = held;
    freeze(held);
    emit heldChanged();
    announce(former);
}

void StreamData::clear()
{
    const Appearance former = appearance();
    clearStore();
    announce(former);
}

void StreamData::announce(const Appearance &former)
{
    const SampleHistory now = history();
    if (now.isSame(former.history))
        return;
    if (now.size != former.history.size)
        emit sizeChanged(now.size);
    emitPlotChanged();
}

bool StreamData::event(QEvent *event)
{
    if (event->type() != pushEvent)
        return SampledData::event(event);
    // Before the samples are taken: what is pushed from here on is announced again.
    m_pushAnnounced.exchange(false);
    const Appearance former = appearance();
    takePushed();
    announce(former);
    return true;
}

QVector<double> StreamData::numbersOf(const QJSValue &values)
{
    if (values.isNumber())
        return {values.toNumber()};
    return numberList(QVariant::fromValue(values)).value_or(QVector<double>());
}

bool StreamData::admitPush(int count)
{
    if (count <= 0)
        return false;
    if (m_pusher.admit())
        return true;
    if (!m_refusalTold.exchange(true))
        qCWarning(kitLog).nospace() << metaObject()->className()
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
