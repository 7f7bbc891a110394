#pragma once

#include <QObject>
#include <QPointer>
#include <QSet>
#include <QVector>

class AbstractPlot;
class GraphView;
class QQuickItem;
class ValueAxis;

namespace graph {

// The plots in a chart: its children, those in items in it, such as Loaders, and what its Instantiators make. Tells when
// plots or their data change.
class ChartPlots : public QObject
{
    Q_OBJECT

public:
    // layers: children of the view in which no plots are looked for.
    ChartPlots(GraphView *view, const QVector<const QQuickItem *> &layers);

    // What an Instantiator makes has no place in the scene until somebody gives it one: those of the view get theirs.
    void placeInstantiated();
    // In the order of the scene.
    QVector<AbstractPlot *> find();
    // Not at once: a document has not yet said anything about an item that has just got its parent.
    void lookLater();
    // For those who ask before that.
    void lookNow();

    // The ones that the chart has taken.
    const QVector<QPointer<AbstractPlot>> &traces() const { return m_traces; }
    // Those of the plots that have values to read. False when they are the same.
    bool setTraces(const QVector<AbstractPlot *> &plots);

    // False when it is watched already.
    bool watch(AbstractPlot *plot);
    void unwatch(AbstractPlot *plot);
    // The plot may be destroyed: only its address is used.
    void forget(const AbstractPlot *plot);

signals:
    // There may be other plots, or the same with other axes. From the event loop.
    void changed();
    // What the plots show, or where.
    void dataChanged();
    // Whether one of them has any.
    void readingsChanged();
    // Only its address may be used.
    void plotDestroyed(AbstractPlot *plot);
    // By an Instantiator.
    void axisMade(ValueAxis *axis);

private slots:
    void place(int index, QObject *object);

private:
    void findIn(QQuickItem *item, int depth, QVector<AbstractPlot *> *plots);
    bool isSearched(const QQuickItem *child) const;
    void watchItem(const QQuickItem *item);
    void watchData(const AbstractPlot *plot);
    // False when the object is watched already.
    bool addToWatched(const QObject *object);

    GraphView *m_view;
    QVector<const QQuickItem *> m_layers;
    QVector<QPointer<AbstractPlot>> m_traces;
    QSet<const QObject *> m_watched;
    bool m_isPending = false;
};

} // namespace graph
