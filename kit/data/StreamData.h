#pragma once

#include "kit/data/PushQueue.h"
#include "kit/data/SampledData.h"

#include <QBasicTimer>
#include <QJSValue>

#include <atomic>

namespace graph {

// What live data have in common: a capacity, the possibility to freeze them, and samples that another thread
// pushes.
class GRAPH_CHARTS_EXPORT StreamData : public SampledData
{
    Q_OBJECT
    Q_PROPERTY(int capacity READ capacity WRITE setCapacity NOTIFY capacityChanged)
    Q_PROPERTY(bool held READ isHeld WRITE setHeld NOTIFY heldChanged)
    Q_PROPERTY(qint64 dropped READ dropped NOTIFY droppedChanged)

public:
    explicit StreamData(QObject *parent = nullptr);

    virtual int capacity() const = 0;
    bool isHeld() const { return m_held; }
    qint64 dropped() const { return m_dropped; }

    void setCapacity(int capacity);
    void setHeld(bool held);
    void clear() override;

    bool event(QEvent *event) override;

signals:
    void capacityChanged();
    void heldChanged();
    void droppedChanged();

protected:
    void timerEvent(QTimerEvent *event) override;

    // Announces that the samples are others than they were, once for all changes in one pass of the event loop.
    void announce(const SampleHistory &former);
    // Tells of the properties that have changed with the samples.
    virtual void tellProperties();

    virtual void resizeStore(int capacity) = 0;
    virtual void clearStore() = 0;
    // Freezes what is shown while data go on arriving, or lets go of it.
    virtual void freeze(bool frozen) = 0;
    // On the object's own thread: takes over what was pushed; false where nothing was.
    virtual bool takePushed() = 0;

    // What a document appends: a list or a single number.
    QVector<double> numbersOf(const QJSValue &values);

    // Whether a call comes from the object's own thread. Of others, which are to be ignored, it tells once.
    bool isOnOwnThread(const char *call);

    // For the thread that pushes.
    bool admitPush(int count);
    void announcePush();
    void countDropped(qint64 count);

private:
    bool takeAndAnnounce();

    OneThread m_pusher;
    std::atomic<bool> m_pushAnnounced{false};
    std::atomic<bool> m_refusalTold{false};
    std::atomic<bool> m_foreignCallTold{false};
    QBasicTimer m_takeTimer; // while samples keep coming
    int m_takes = 0;         // one after the other that found some
    qint64 m_dropped = 0;
    int m_toldSize = 0;
    bool m_held = false;
};

} // namespace graph
