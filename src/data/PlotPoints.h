#pragma once

#include "common/Export.h"
#include "data/LazyPyramid.h"
#include "data/PlotData.h"

// Samples with an x each, in any order, or pairs of them as separate segments. A y that is not finite is a gap; a point
// without a finite x is not drawn.
class GRAPH_CHARTS_EXPORT PlotPoints : public PlotData
{
    Q_OBJECT
    Q_PROPERTY(QVector<double> xData READ xData WRITE setXData)
    Q_PROPERTY(QVector<double> yData READ yData WRITE setYData)

public:
    explicit PlotPoints(QObject *parent = nullptr);

    int size() const override { return m_points.size(); }
    QRectF boundingRect() const override;
    QPointF sample(int index) const override { return m_points.value(index); }
    QVector<QPointF> samples(const QRectF &rect) const override;
    int indexOf(double x) const override;
    double x(int index) const override { return sample(index).x(); }
    double y(int index) const override { return sample(index).y(); }
    QPointF first() const override { return sample(0); }
    QPointF last() const override { return sample(size() - 1); }
    void setDbusAddress(const QString &address) override;
    bool containsPoint(double x) override;
    void clear() override;
    void reserve(int n) override;
    void resize(int n) override;
    bool operator==(const PlotData &other) const override;
    using PlotData::sampleSpan;
    graph::SampleSpan sampleSpan(double xMin, double xMax) const override;
    graph::SampleHistory history() const override { return {m_epoch, 0, size()}; }

    // Sorts by x; equal ones keep their order, NaN goes last.
    virtual void sort();

    QVector<double> xData() const;
    QVector<double> yData() const;

    void setXData(const QVector<double> &xData);
    void setYData(const QVector<double> &yData);

protected:
    const QMetaObject *kind() const override { return &staticMetaObject; }
    void write(QDataStream &stream) const override;
    void read(QDataStream &stream) override;

    void setPoints(const QVector<QPointF> &points);
    void appendPoint(const QPointF &point);
    // The indices of the points in ascending order of x, NaN last.
    QVector<int> ascendingOrder() const;

    static void GenerateAssert(bool condition, const char *where, const char *message);

private:
    // The points in ascending order of x, without those whose x is NaN.
    struct Ascending
    {
        bool isKnown = false;
        QVector<QPointF> points;
        QVector<int> indices; // of each point in the data; empty when the data is in this order already
    };

    // Around each change of m_points; the first gives the number of points for the second.
    int beginChange();
    void endChange(int formerSize);
    template <typename Coordinate> void setCoordinate(const QVector<double> &values, Coordinate coordinate);
    const Ascending &ascending() const;
    QVector<int> segmentsIn(double xMin, double xMax) const;
    graph::SampleSpan segmentSpan(double xMin, double xMax) const;

    QVector<QPointF> m_points;
    qint64 m_epoch = 1;
    mutable Ascending m_ascending;
    mutable graph::LazyPyramid m_pyramid;
};
