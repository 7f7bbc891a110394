#pragma once

#include "kit/data/ComputedData.h"
#include "kit/data/TraceAverage.h"

namespace graph {

// The mean of the newest traces of its source, of levels in dB as powers where asked for. Gaps are passed over.
class GRAPH_CHARTS_EXPORT Average : public ComputedData
{
    Q_OBJECT
    Q_PROPERTY(int count READ count WRITE setCount NOTIFY countChanged)
    Q_PROPERTY(Mode mode READ mode WRITE setMode NOTIFY modeChanged)
    Q_PROPERTY(bool power READ isPower WRITE setPower NOTIFY powerChanged)

public:
    enum Mode : int { Linear, Exponential };
    Q_ENUM(Mode)

    explicit Average(QObject *parent = nullptr);

    int count() const { return m_count; }
    Mode mode() const { return m_mode; }
    bool isPower() const { return m_power; }

    void setCount(int count);
    void setMode(Mode mode);
    void setPower(bool power);

signals:
    void countChanged();
    void modeChanged();
    void powerChanged();

protected:
    void compute(const double *values, double *result, int count, bool first) override;
    void forget() override;

private:
    void beginAgain();

    int m_count = 16;
    Mode m_mode = Linear;
    bool m_power = false;
    TraceAverage m_average;
};

} // namespace graph
