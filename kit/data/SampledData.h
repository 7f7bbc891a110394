#pragma once

#include "data/PlotData.h"

namespace graph {

// Data of the second module, which documents read and do not write as a whole: everything that can be asked
// about the samples follows from one span of all of them.
class GRAPH_CHARTS_EXPORT SampledData : public PlotData
{
    Q_OBJECT

public:
    using PlotData::PlotData;

    int size() const override { return allSamples().size(); }
    QRectF boundingRect() const override;
    QPointF sample(int index) const override;
    QVector<QPointF> samples(const QRectF &rect) const override;
    int indexOf(double x) const override;
    double x(int index) const override { return sample(index).x(); }
    double y(int index) const override { return sample(index).y(); }
    QPointF first() const override { return sample(0); }
    QPointF last() const override { return sample(size() - 1); }
    bool containsPoint(double x) override;
    Q_INVOKABLE void clear() override = 0;
    void reserve(int) override {}
    void resize(int) override {}
    using PlotData::sampleSpan;
    SampleSpan sampleSpan(double xMin, double xMax) const override
    {
        return allSamples().between(xMin, xMax);
    }

protected:
    // In ascending order of x.
    virtual SampleSpan allSamples() const = 0;
};

} // namespace graph
