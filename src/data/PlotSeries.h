#pragma once

#include "common/Export.h"
#include "data/LazyPyramid.h"
#include "data/PlotData.h"

// Equally spaced samples: y values, the x of the first one and the distance from one to the next, which may be negative,
// in units of the axes. A value that is not finite is a gap; an x or a distance that is not finite leaves no samples.
class GRAPH_CHARTS_EXPORT PlotSeries : public PlotData
{
    Q_OBJECT
    Q_PROPERTY(double xInterval READ xInterval WRITE setXInterval NOTIFY xIntervalChanged)
    Q_PROPERTY(double xFirstValue READ xFirstValue WRITE setXFirstValue NOTIFY xFirstValueChanged)
    Q_PROPERTY(QVector<double> yData READ yData WRITE setYData)

public:
    explicit PlotSeries(QObject *parent = nullptr);

    int size() const override { return m_yData.size(); }
    QRectF boundingRect() const override;
    QPointF sample(int index) const override;
    QVector<QPointF> samples(const QRectF &rect) const override;
    int indexOf(double x) const override;
    double x(int index) const override { return m_xFirstValue + index * m_xInterval; }
    double y(int index) const override;
    QPointF first() const override;
    QPointF last() const override;
    void setDbusAddress(const QString &address) override;
    void clear() override;
    void reserve(int n) override;
    void resize(int n) override;
    bool operator==(const PlotData &other) const override;
    using PlotData::sampleSpan;
    graph::SampleSpan sampleSpan(double xMin, double xMax) const override;
    graph::SampleHistory history() const override { return {m_epoch, 0, size()}; }

    double xInterval() const { return m_xInterval; }
    double xFirstValue() const { return m_xFirstValue; }
    QVector<double> yData() const { return m_yData; }

    void setXInterval(double interval);
    void setXFirstValue(double value);
    // Shares the array with the caller.
    void setYData(const QVector<double> &yData);

    Q_INVOKABLE void fillData(int count, double min, double max);

signals:
    void xIntervalChanged(double interval);
    void xFirstValueChanged(double value);

protected:
    const QMetaObject *kind() const override { return &staticMetaObject; }
    void write(QDataStream &stream) const override;
    void read(QDataStream &stream) override;

private:
    bool contains(int index) const { return index >= 0 && index < m_yData.size(); }
    // After a change of the values.
    void announceData(int formerSize);

    QVector<double> m_yData;
    qint64 m_epoch = 1;
    double m_xInterval = 1.0;
    double m_xFirstValue = 0.0;
    mutable graph::LazyPyramid m_pyramid;
};
