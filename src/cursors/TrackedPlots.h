#pragma once

#include <QList>
#include <QPointer>
#include <QStringList>
#include <QVector>

class AbstractPlot;
class PlotData;
class ValueAxis;

namespace graph {

// The values of the plots at a cursor, in their order.
struct PlotReadings
{
    QList<qreal> positions; // pixels of the plot, not rounded
    QList<qreal> values;
    QStringList texts;

    bool operator==(const PlotReadings &other) const
    {
        return positions == other.positions && values == other.values && texts == other.texts;
    }
};

// A plot under a cursor, with the data and the vertical axis that the cursor hears.
struct TrackedPlot
{
    QPointer<AbstractPlot> plot;
    QPointer<PlotData> series;
    QPointer<ValueAxis> axisY;
    bool heard = false; // or only listed
};

// The plots of a cursor and its connections to them. Data and axes that several plots share are heard once.
class TrackedPlots
{
public:
    // The cursor, which has the slots.
    explicit TrackedPlots(QObject *cursor)
        : m_cursor(cursor)
    {
    }

    bool areExactly(const QList<AbstractPlot *> &plots) const;
    // Skips those that are null.
    void replace(const QList<AbstractPlot *> &plots);
    // Adds it to the list, behind the others; its signals are not heard.
    void append(AbstractPlot *plot);

    int count() const { return m_plots.size(); }
    AbstractPlot *plot(int index) const;
    // The first that is there.
    AbstractPlot *first() const;
    int indexOf(const AbstractPlot *plot) const;

    // The data of the plots that are heard; null for those without.
    int seriesCount() const;
    PlotData *series(int index) const;
    int indexOfSeries(const PlotData *data) const;

    // What a plot has in place of its former data or axis.
    void replaceSeries(int index, PlotData *data);
    void replaceAxisY(int index, ValueAxis *axis);

    // Whether there is a value behind the reading of a plot: its place is filled in any case.
    bool hasSamples(int index) const;
    PlotReadings readingsAt(double value) const;
    // What a change of a plot or of data may have changed in them: those of that plot, of that data and of plots that are
    // not heard. False for any other object, which may have changed all of them.
    bool readAgain(const QObject *changed, double value, PlotReadings *readings) const;

private:
    void release();
    void adopt(AbstractPlot *plot);
    template <typename T>
    void replaceEntry(QPointer<T> TrackedPlot::*entry, int index, T *object, const char *signal,
                      const char *formerSlot);

    QObject *m_cursor;
    QVector<TrackedPlot> m_plots;
};

} // namespace graph
