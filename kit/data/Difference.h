#pragma once

#include "kit/data/ComputedData.h"

namespace graph {

// Its source minus a reference, paired by place: as many samples as the shorter one has, NaN where either is.
class GRAPH_CHARTS_EXPORT Difference : public ComputedData
{
    Q_OBJECT
    Q_PROPERTY(PlotData *reference READ reference WRITE setReference NOTIFY referenceChanged)

public:
    explicit Difference(QObject *parent = nullptr);

    PlotData *reference() const { return m_reference; }
    // As that of the source.
    bool hasWrittenReference() const { return m_hasReference; }
    void setReference(PlotData *reference);

signals:
    void referenceChanged();

protected:
    QVector<PlotData *> inputs() const override { return {source(), m_reference}; }
    void compute(const double *values, double *result, int count, bool first) override;
    int resultSize(int sourceSize) const override;

private:
    QPointer<PlotData> m_reference;
    bool m_hasReference = false;
};

} // namespace graph
