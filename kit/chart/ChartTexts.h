#pragma once

#include "common/Export.h"
#include "kit/chart/EarlyItem.h"

#include <QSet>

class AbstractPlot;
class ValueAxis;

namespace graph {

class ChartView;

// The texts of values for bindings, which are evaluated again only when a property that they have read changes: they
// read this object out of `current`.
class GRAPH_CHARTS_EXPORT ChartTexts : public EarlyItem
{
    Q_OBJECT
    Q_PROPERTY(graph::ChartTexts *current READ current NOTIFY changed)

public:
    explicit ChartTexts(ChartView *chart);

    ChartTexts *current() { return this; }
    Q_INVOKABLE QString formatX(double value) const;
    Q_INVOKABLE QString formatY(QQuickItem *trace, double value) const;
    Q_INVOKABLE QString formatDifferenceY(QQuickItem *trace, double difference) const;

    // Values of these may be written, and of these axes.
    void watch(const QList<AbstractPlot *> &plots, const QVector<ValueAxis *> &axes);

signals:
    // They may be others: once before a frame, and not at all while nobody listens.
    void changed();

protected:
    void prepare() override;

private slots:
    void invalidate();

private:
    void watchAxis(const ValueAxis *axis);
    void watchPlot(const AbstractPlot *plot);
    void watchData(const AbstractPlot *plot);
    // False when the object is watched already.
    bool addToWatched(const QObject *object);

    ChartView *m_chart;
    QSet<const QObject *> m_watched;
    bool m_isValid = true;
};

} // namespace graph
