#pragma once

#include "kit/data/ComputedData.h"

namespace graph {

// Its source minus a reference, paired by place: as many samples as the shorter one has, NaN where either is.
class GRAPH_CHARTS_EXPORT Difference : public ComputedData
{
    Q_OBJECT
    Q_PROPERTY(QObject *reference READ givenReference WRITE giveReference NOTIFY referenceChanged)

public:
    explicit Difference(QObject *parent = nullptr);

    PlotData *reference() const { return m_reference; }
    // As that of the source.
    bool hasWrittenReference() const { return m_referenceInput.isWritten(); }
    void setReference(PlotData *reference) { giveReference(reference); }
    // Data, or a plot.
    QObject *givenReference() const { return m_referenceInput.given(); }
    void giveReference(QObject *reference) { m_referenceInput.give(reference); }

signals:
    void referenceChanged();

protected:
    QVector<PlotData *> inputs() const override { return {source(), m_reference}; }
    void compute(const double *values, double *result, int count, bool first) override;
    int resultSize(int sourceSize) const override;

private:
    bool useReference(PlotData *reference);

    DataInput m_referenceInput{this, "reference",
                               [this](PlotData *reference) { return useReference(reference); }};
    QPointer<PlotData> m_reference;
};

} // namespace graph
