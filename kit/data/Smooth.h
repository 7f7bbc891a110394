#pragma once

#include "kit/data/ComputedData.h"

namespace graph {

// Each sample of its source as the mean of those around it; gaps are passed over.
class GRAPH_CHARTS_EXPORT Smooth : public ComputedData
{
    Q_OBJECT
    Q_PROPERTY(int window READ window WRITE setWindow NOTIFY windowChanged)

public:
    explicit Smooth(QObject *parent = nullptr);

    int window() const { return m_window; }
    void setWindow(int window);

signals:
    void windowChanged();

protected:
    void compute(const double *values, double *result, int count, bool first) override;

private:
    int m_window = 5;
};

} // namespace graph
