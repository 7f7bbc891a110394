#pragma once

#include "data/PlotData.h"

#include <QObject>
#include <QPointer>
#include <QVector>

#include <optional>

class AbstractPlot;

namespace graph {

// Where the data of a trace come from: the first of series, address and values that a document gives. Makes the data
// object for an address and for values, and gives the plot what it is to show.
class TraceSource : public QObject
{
    Q_OBJECT

public:
    explicit TraceSource(AbstractPlot *plot);

    QVector<double> values() const { return m_values.value_or(QVector<double>()); }
    QVector<double> positions() const { return m_positions.value_or(QVector<double>()); }
    double interval() const { return m_interval; }
    double start() const { return m_start; }
    PlotData *series() const { return m_series; }
    QString address() const { return m_address; }
    QString name() const { return m_name; }
    QString unit() const { return m_unit; }

    // Whether they were written; an address be it an empty one.
    bool hasValues() const { return m_values.has_value(); }
    bool hasPositions() const { return m_positions.has_value(); }
    bool hasAddress() const { return m_hasAddress; }
    bool hasInterval() const { return m_hasInterval; }

    // False when nothing changes.
    bool setValues(const std::optional<QVector<double>> &values);
    bool setPositions(const std::optional<QVector<double>> &positions);
    bool setInterval(double interval);
    bool setStart(double start);
    bool setSeries(PlotData *series);
    bool setAddress(const QString &address);
    bool setName(const QString &name);
    bool setUnit(const QString &unit);

    // Between the two a document is being read: what it gives counts when all of it is there.
    void begin();
    void complete();

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    enum class Kind { None, Series, Address, Values };

    Kind kind() const;
    void apply();
    void show(PlotData *data);
    void warnOfTwoSources();
    template <typename Data> Data *ownData(const QString &address = {});
    PlotData *writtenData();
    PlotData *servedData();
    void describe(PlotData *data);

    AbstractPlot *m_plot;
    std::optional<QVector<double>> m_values;
    std::optional<QVector<double>> m_positions;
    double m_interval = 1.0;
    double m_start = 0.0;
    bool m_hasInterval = false;
    bool m_hasStart = false;
    QPointer<PlotData> m_series;
    QString m_address;
    bool m_hasAddress = false;
    QString m_name;
    QString m_unit;
    QPointer<PlotData> m_own;
    QPointer<PlotData> m_shown; // what the plot was given
    bool m_isComplete = true;
    bool m_isDescribing = false;
    bool m_hasWarned = false;
};

} // namespace graph
