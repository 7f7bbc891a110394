#pragma once

#include "kit/data/StreamBuffer.h"
#include "kit/data/StreamData.h"

#include <QJSValue>

namespace graph {

// Live samples with an x each, in units of the axes: the newest `capacity` of those that are appended, from QML, C++,
// another thread or the bus. A y that is not finite is a gap.
class GRAPH_CHARTS_EXPORT StreamPoints : public StreamData
{
    Q_OBJECT

public:
    explicit StreamPoints(QObject *parent = nullptr);
    explicit StreamPoints(int capacity, QObject *parent = nullptr);

    int size() const override { return shown().size; }
    QPointF sample(int index) const override
    {
        return contains(index) ? shown().samples()[index] : QPointF();
    }
    void setDbusAddress(const QString &address) override;
    SampleHistory history() const override { return shown().history(); }

    int capacity() const override { return m_live.capacity(); }
    // One after the other, size() of them; valid until the next change of the data.
    const QPointF *points() const { return shown().samples(); }

    Q_INVOKABLE void append(const QJSValue &xs, const QJSValue &ys = QJSValue());
    void append(const double *xs, const double *ys, int count);
    void append(double x, double y) { append(&x, &y, 1); }
    // The same from one other thread. Nobody may push while the object is being destroyed.
    void push(const double *xs, const double *ys, int count);

protected:
    SampleSpan allSamples() const override;
    void resizeStore(int capacity) override;
    void clearStore() override;
    void freeze(bool frozen) override;
    bool takePushed() override;

private:
    // The points in ascending order of x where they do not come so.
    struct Sorted
    {
        SampleHistory history;
        QVector<QPointF> points;
        QVector<int> indices;
    };

    const StreamView<QPointF> &shown() const { return isHeld() ? m_frozen : m_live.view(); }
    bool contains(int index) const { return index >= 0 && index < shown().size; }
    template <typename At> void appendLive(int count, At at);
    bool isAscending() const { return m_fallEnd <= shown().number; }
    const Sorted &sorted() const;
    void takeCoordinate(QVector<double> &waiting, const QVector<double> &array, int appended);

    StreamBuffer<QPointF> m_live;
    StreamView<QPointF> m_frozen; // while held
    PushQueue<QPointF> m_pushed;
    // As long as the sample before this number is there, x is not ascending.
    qint64 m_fallEnd = 0;
    mutable Sorted m_sorted;
    QVector<double> m_waitingX; // from the bus, for the other coordinate
    QVector<double> m_waitingY;
};

} // namespace graph
