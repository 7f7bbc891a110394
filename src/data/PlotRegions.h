#pragma once

#include "common/Export.h"
#include "data/PlotData.h"
#include "data/PlotRegion.h"

#include <QFont>
#include <QQmlListProperty>
#include <QTransform>

// Regions in ascending order of their begins, written by a document, from C++ or by a service on the bus. A stream that
// is damaged leaves them as they were.
class GRAPH_CHARTS_EXPORT PlotRegions : public PlotData
{
    Q_OBJECT
    Q_PROPERTY(QQmlListProperty<PlotRegion> regions READ regions NOTIFY regionsChanged)
    Q_CLASSINFO("DefaultProperty", "regions")

public:
    explicit PlotRegions(QObject *parent = nullptr);

    int size() const override { return m_regions.size(); }
    QRectF boundingRect() const override;
    QPointF sample(int index) const override;
    QVector<QPointF> samples(const QRectF &rect) const override;
    int indexOf(double x) const override;
    double x(int index) const override { return sample(index).x(); }
    double y(int index) const override { return sample(index).y(); }
    QPointF first() const override { return sample(0); }
    QPointF last() const override { return sample(size() - 1); }
    void clear() override;
    void reserve(int n) override;
    // The number of regions is that of the objects: this only reserves.
    void resize(int n) override;
    bool operator==(const PlotData &other) const override;
    using PlotData::sampleSpan;
    // The regions that overlap the range, as points (begin, value) in ascending order of begin.
    graph::SampleSpan sampleSpan(double xMin, double xMax) const override;

    QQmlListProperty<PlotRegion> regions();
    // Null for an index that does not exist.
    PlotRegion *region(int index) const { return m_regions.value(index); }

    Q_INVOKABLE void append(PlotRegion *data);
    Q_INVOKABLE void remove(PlotRegion *data);

    // Sorts by begin.
    void sort();
    // Lays out the names of these regions and of those that are appended later, for code of an application that draws
    // PlotRegion::staticText() itself, in the thread that called this. Plots paint in threads of their windows and lay out
    // the names there.
    void prepareStaticText(const QTransform &transform, const QFont &font);

signals:
    void regionsChanged();

protected:
    const QMetaObject *kind() const override { return &staticMetaObject; }
    void write(QDataStream &stream) const override;
    void read(QDataStream &stream) override;

private slots:
    void dropDestroyedRegions();

private:
    QVector<QPointer<PlotRegion>> m_regions;
    bool m_staticTextPrepared = false;
    QTransform m_textTransform;
    QFont m_textFont;
};
