#pragma once

#include "kit/data/ComputedData.h"

namespace graph {

// The least value of each sample of its source since clear(); gaps are passed over.
class GRAPH_CHARTS_EXPORT MinHold : public ComputedData
{
    Q_OBJECT

public:
    explicit MinHold(QObject *parent = nullptr);

protected:
    void compute(const double *values, double *result, int count, bool first) override;
};

} // namespace graph
