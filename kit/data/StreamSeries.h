#pragma once

#include "kit/data/StreamBuffer.h"
#include "kit/data/StreamData.h"

#include <QJSValue>

namespace graph {

// Live samples at equal distances of x, in units of the axes: the newest `capacity` of those that are appended, from QML,
// C++, another thread or the bus. A value that is not finite is a gap.
class GRAPH_CHARTS_EXPORT StreamSeries : public StreamData
{
    Q_OBJECT
    Q_PROPERTY(double interval READ interval WRITE setInterval NOTIFY intervalChanged)
    Q_PROPERTY(QVariant start READ start WRITE setStart NOTIFY startChanged)

public:
    explicit StreamSeries(QObject *parent = nullptr);
    StreamSeries(double interval, int capacity, QObject *parent = nullptr);

    int size() const override { return shown().size; }
    double x(int index) const override { return xOf(shown().number + index); }
    double y(int index) const override { return contains(index) ? shown().samples()[index] : 0.0; }
    QPointF sample(int index) const override
    {
        return contains(index) ? QPointF(x(index), y(index)) : QPointF();
    }
    int indexOf(double x) const override;
    void setDbusAddress(const QString &address) override;
    SampleHistory history() const override { return shown().history(); }

    int capacity() const override { return m_live.capacity(); }
    double interval() const { return m_interval; }
    // Whether an interval was written, or a service has said one.
    bool hasInterval() const;
    double start() const { return xOf(shown().number); }
    // One after the other, size() of them; valid until the next change of the data.
    const double *values() const { return shown().samples(); }

    void setInterval(double interval);
    void setStart(double start);
    void setStart(const QVariant &start);

    Q_INVOKABLE void append(const QJSValue &values);
    void append(const double *values, int count);
    void append(double value) { append(&value, 1); }
    void append(const QVector<double> &values) { append(values.constData(), values.size()); }
    void append(std::initializer_list<double> values) { append(values.begin(), int(values.size())); }
    // The same from one other thread. Nobody may push while the object is being destroyed.
    void push(const double *values, int count);

    bool event(QEvent *event) override;

signals:
    void intervalChanged();
    void startChanged();

protected:
    SampleSpan allSamples() const override;
    void tellProperties() override;
    void resizeStore(int capacity) override { m_live.setCapacity(capacity); }
    void clearStore() override;
    void freeze(bool frozen) override;
    bool takePushed() override;

private:
    const StreamView<double> &shown() const { return isHeld() ? m_frozen : m_live.view(); }
    bool contains(int index) const { return index >= 0 && index < shown().size; }
    double xOf(qint64 number) const { return m_countedX + double(number - m_countedFrom) * m_interval; }
    void appendLive(const double *values, int count);
    void applyInterval(double interval);
    void takeServedPlace();

    StreamBuffer<double> m_live;
    StreamView<double> m_frozen; // while held
    PushQueue<double> m_pushed;
    double m_interval = 1.0;
    double m_writtenStart = 0.0;
    double m_toldStart = 0.0;
    // x is counted from one sample, so that a sample keeps its x to the last bit while others fall out.
    double m_countedX = 0.0;
    qint64 m_countedFrom = 0;
    qint64 m_servedSize = 0; // of the service's array
    bool m_hasInterval = false;
    bool m_hasStart = false;
};

} // namespace graph
