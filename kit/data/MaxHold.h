#pragma once

#include "kit/data/ComputedData.h"

namespace graph {

// The greatest value of each sample of its source since clear(); gaps are passed over.
class GRAPH_CHARTS_EXPORT MaxHold : public ComputedData
{
    Q_OBJECT

public:
    explicit MaxHold(QObject *parent = nullptr);

protected:
    void compute(const double *values, double *result, int count, bool first) override;
};

} // namespace graph
