#pragma once

#include "kit/data/DataInput.h"
#include "kit/data/SampleSums.h"
#include "kit/data/SeriesObserver.h"

#include <limits>

namespace graph {

// Numbers about the samples of data in a stretch of x; NaN where it has none that are finite.
class GRAPH_CHARTS_EXPORT Statistics : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QObject *series READ givenSeries WRITE giveSeries NOTIFY seriesChanged)
    Q_PROPERTY(double from READ from WRITE setFrom NOTIFY fromChanged)
    Q_PROPERTY(double to READ to WRITE setTo NOTIFY toChanged)
    Q_PROPERTY(int count READ count NOTIFY valuesChanged)
    Q_PROPERTY(double min READ min NOTIFY valuesChanged)
    Q_PROPERTY(double max READ max NOTIFY valuesChanged)
    Q_PROPERTY(double mean READ mean NOTIFY valuesChanged)
    Q_PROPERTY(double rms READ rms NOTIFY valuesChanged)
    Q_PROPERTY(double peakToPeak READ peakToPeak NOTIFY valuesChanged)

public:
    explicit Statistics(QObject *parent = nullptr);

    PlotData *series() const { return m_observer.series(); }
    double from() const { return m_from; }
    double to() const { return m_to; }
    int count() const { return int(m_sums.count); }
    double min() const;
    double max() const;
    double mean() const;
    double rms() const;
    double peakToPeak() const { return max() - min(); }

    void setSeries(PlotData *series) { giveSeries(series); }
    // Data, or a plot.
    QObject *givenSeries() const { return m_input.given(); }
    void giveSeries(QObject *series) { m_input.give(series); }
    void setFrom(double from);
    void setTo(double to);

signals:
    void seriesChanged();
    void fromChanged();
    void toChanged();
    void valuesChanged();

private:
    void useSeries(PlotData *series);
    void look();

    SeriesObserver m_observer;
    DataInput m_input{this, "series", [this](PlotData *series) {
                          useSeries(series);
                          return true;
                      }};
    SampleSums m_blocks;
    Sums m_sums;
    double m_from = -std::numeric_limits<double>::infinity();
    double m_to = std::numeric_limits<double>::infinity();
};

} // namespace graph
