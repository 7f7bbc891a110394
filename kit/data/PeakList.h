#pragma once

#include "kit/data/DataInput.h"
#include "kit/data/PeakSearch.h"
#include "kit/data/SeriesObserver.h"

#include <QAbstractListModel>

#include <limits>

namespace graph {

// The peaks of data, the highest first, as a list model. Samples that are not finite bound peaks like the ends of the
// data.
class GRAPH_CHARTS_EXPORT PeakList : public QAbstractListModel
{
    Q_OBJECT
    Q_PROPERTY(QObject *series READ givenSeries WRITE giveSeries NOTIFY seriesChanged)
    Q_PROPERTY(double from READ from WRITE setFrom NOTIFY fromChanged)
    Q_PROPERTY(double to READ to WRITE setTo NOTIFY toChanged)
    Q_PROPERTY(double prominence READ prominence WRITE setProminence NOTIFY prominenceChanged)
    Q_PROPERTY(int limit READ limit WRITE setLimit NOTIFY limitChanged)
    Q_PROPERTY(int count READ count NOTIFY countChanged)

public:
    enum Role : int { PositionRole = Qt::UserRole, ValueRole, ProminenceRole, WidthRole, IndexRole };

    explicit PeakList(QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    PlotData *series() const { return m_observer.series(); }
    double from() const { return m_from; }
    double to() const { return m_to; }
    double prominence() const { return m_prominence; }
    int limit() const { return m_limit; }
    int count() const { return m_rows.size(); }

    void setSeries(PlotData *series) { giveSeries(series); }
    // Data, or a plot.
    QObject *givenSeries() const { return m_input.given(); }
    void giveSeries(QObject *series) { m_input.give(series); }
    void setFrom(double from);
    void setTo(double to);
    void setProminence(double prominence);
    void setLimit(int limit);

    Q_INVOKABLE double next(double x) const;
    Q_INVOKABLE double previous(double x) const;

signals:
    void seriesChanged();
    void fromChanged();
    void toChanged();
    void prominenceChanged();
    void limitChanged();
    void countChanged();
    // The rows, or what next() and previous() find.
    void peaksChanged();

private:
    struct Row
    {
        double position;
        double value;
        double prominence;
        double width;
        int index;
    };

    void useSeries(PlotData *series);
    void look();
    QVector<Row> highest(const SampleSpan &samples, QVector<Peak> peaks) const;
    void showRows(const QVector<Row> &rows);

    SeriesObserver m_observer;
    DataInput m_input{this, "series", [this](PlotData *series) {
                          useSeries(series);
                          return true;
                      }};
    double m_from = -std::numeric_limits<double>::infinity();
    double m_to = std::numeric_limits<double>::infinity();
    double m_prominence = 0.0;
    int m_limit = 10;
    SampleHistory m_seen;
    QVector<Peak> m_peaks;       // all of the data
    QVector<double> m_positions; // of those that are asked for, ascending
    QVector<Row> m_rows;
};

} // namespace graph
