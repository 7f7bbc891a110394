#pragma once

#include <QObject>
#include <QVector>

namespace gallery {

// The largest and the smallest level that each sample of a live trace has had.
class TraceHold : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QVector<double> maximum READ maximum NOTIFY changed)
    Q_PROPERTY(QVector<double> minimum READ minimum NOTIFY changed)
    Q_PROPERTY(int sweeps READ sweeps NOTIFY changed)

public:
    using QObject::QObject;

    QVector<double> maximum() const { return m_maximum; }
    QVector<double> minimum() const { return m_minimum; }
    int sweeps() const { return m_sweeps; }

    // A sweep of another size starts from nothing; a missing sample (NaN) leaves what is held.
    Q_INVOKABLE void add(const QVector<double> &levels);
    Q_INVOKABLE void reset();

signals:
    void changed();

private:
    QVector<double> m_maximum;
    QVector<double> m_minimum;
    int m_sweeps = 0;
};

} // namespace gallery
