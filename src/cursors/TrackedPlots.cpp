#include "cursors/TrackedPlots.h"

#include "axis/ValueAxis.h"
#include "cursors/NearestSample.h"
#include "data/PlotData.h"
#include "view/base/AbstractPlot.h"

#include <algorithm>

namespace graph {

namespace {

const char *const valuesSlot = SLOT(handlePlotValuesChanged());

void connectOnce(QObject *sender, const char *signal, QObject *receiver, const char *slot)
{
    if (sender)
        QObject::connect(sender, signal, receiver, slot, Qt::UniqueConnection);
}

template <typename Object, typename Entry>
int indexOfEntry(const QVector<TrackedPlot> &plots, QPointer<Entry> TrackedPlot::*entry, const Object *object)
{
    const auto found = std::find_if(plots.begin(), plots.end(),
                                    [&](const TrackedPlot &tracked) { return tracked.*entry == object; });
    return object && found != plots.end() ? int(found - plots.begin()) : -1;
}

struct PlotReading
{
    double position;
    double value;
    QString text;
};

PlotReading readingOf(const AbstractPlot &plot, double value)
{
    const PlotData *data = plot.plotData();
    if (!data || data->size() < 1)
        return {0.0, 0.0, QStringLiteral("---")};
    const double y = data->y(nearestSample(*data, value));
    return {plot.mapToItemY(y), y, data->formattedYValue(y)};
}

// A list that stays the same remains shared, and is compared at once.
template <typename List> void put(List &list, int i, const typename List::value_type &value)
{
    if (!(list.at(i) == value))
        list[i] = value;
}

} // namespace

bool TrackedPlots::areExactly(const QList<AbstractPlot *> &plots) const
{
    return std::equal(plots.begin(), plots.end(), m_plots.begin(), m_plots.end(),
                      [](AbstractPlot *plot, const TrackedPlot &tracked) { return tracked.plot == plot; });
}

void TrackedPlots::replace(const QList<AbstractPlot *> &plots)
{
    release();
    for (AbstractPlot *plot : plots) {
        if (plot)
            adopt(plot);
    }
}

void TrackedPlots::release()
{
    for (const TrackedPlot &tracked : qAsConst(m_plots)) {
        if (tracked.plot)
            QObject::disconnect(tracked.plot, nullptr, m_cursor, nullptr);
        if (tracked.series)
            QObject::disconnect(tracked.series, nullptr, m_cursor, nullptr);
        // Only this signal: the cursor may follow the axis as its own, too.
        if (tracked.axisY)
            QObject::disconnect(tracked.axisY, SIGNAL(visibleRangeChanged()), m_cursor, valuesSlot);
    }
    m_plots.clear();
}

void TrackedPlots::adopt(AbstractPlot *plot)
{
    m_plots.append({plot, plot->plotData(), plot->axisY(), true});
    connectOnce(plot->plotData(), SIGNAL(plotChanged()), m_cursor, valuesSlot);
    connectOnce(plot->plotData(), SIGNAL(sgnActiveChanged()), m_cursor, SLOT(handlePlotActiveChanged()));
    connectOnce(plot->axisY(), SIGNAL(visibleRangeChanged()), m_cursor, valuesSlot);
    connectOnce(plot, SIGNAL(plotDataChanged(PlotData *)), m_cursor, SLOT(handlePlotDataChanged(PlotData *)));
    connectOnce(plot, SIGNAL(axisYChanged(ValueAxis *)), m_cursor, SLOT(handleYAxesChanged(ValueAxis *)));
    connectOnce(plot, SIGNAL(widthChanged()), m_cursor, SLOT(handlePlotSizeChanged()));
    connectOnce(plot, SIGNAL(heightChanged()), m_cursor, SLOT(handlePlotSizeChanged()));
}

void TrackedPlots::append(AbstractPlot *plot)
{
    m_plots.append({plot, nullptr, nullptr, false});
}

AbstractPlot *TrackedPlots::plot(int index) const
{
    return m_plots.value(index).plot;
}

AbstractPlot *TrackedPlots::first() const
{
    const auto found =
        std::find_if(m_plots.begin(), m_plots.end(), [](const TrackedPlot &tracked) { return tracked.plot; });
    return found == m_plots.end() ? nullptr : found->plot.data();
}

int TrackedPlots::indexOf(const AbstractPlot *plot) const
{
    return indexOfEntry(m_plots, &TrackedPlot::plot, plot);
}

int TrackedPlots::seriesCount() const
{
    return int(std::count_if(m_plots.begin(), m_plots.end(),
                             [](const TrackedPlot &tracked) { return tracked.heard; }));
}

PlotData *TrackedPlots::series(int index) const
{
    return m_plots.value(index).series;
}

bool TrackedPlots::hasSamples(int index) const
{
    const AbstractPlot *tracked = plot(index);
    return tracked && tracked->plotData() && tracked->plotData()->size() > 0;
}

int TrackedPlots::indexOfSeries(const PlotData *data) const
{
    return indexOfEntry(m_plots, &TrackedPlot::series, data);
}

// Data that arrives here is not heard for its active flag, unlike the data that the plots bring with them.
void TrackedPlots::replaceSeries(int index, PlotData *data)
{
    replaceEntry(&TrackedPlot::series, index, data, SIGNAL(plotChanged()), nullptr);
}

void TrackedPlots::replaceAxisY(int index, ValueAxis *axis)
{
    replaceEntry(&TrackedPlot::axisY, index, axis, SIGNAL(visibleRangeChanged()), valuesSlot);
}

// Ends the former object's connections to `formerSlot`, all of them for null, unless another plot has it,
// too.
template <typename T>
void TrackedPlots::replaceEntry(QPointer<T> TrackedPlot::*entry, int index, T *object, const char *signal,
                                const char *formerSlot)
{
    if (!m_plots.at(index).heard)
        return;
    const QPointer<T> former = m_plots.at(index).*entry;
    m_plots[index].*entry = nullptr;
    if (former && indexOfEntry(m_plots, entry, former.data()) < 0)
        QObject::disconnect(former, nullptr, m_cursor, formerSlot);
    const bool connected = object && indexOfEntry(m_plots, entry, object) >= 0;
    m_plots[index].*entry = object;
    if (object && !connected)
        QObject::connect(object, signal, m_cursor, valuesSlot);
}

/*!
    \qmlproperty list<real> GraphCursor::yValues
    \readonly
    The y value of every plot at the cursor, in the order of plots; 0 for a plot without data.
*/
/*!
    \qmlproperty list<string> GraphCursor::formattedYValues
    \readonly
    yValues as texts in the units of the data, "---" for a plot without data.
*/
/*!
    \qmlproperty list<real> GraphCursor::yPositions
    \readonly
    yValues in pixels of the plots, not rounded.
*/
PlotReadings TrackedPlots::readingsAt(double value) const
{
    PlotReadings readings;
    for (const TrackedPlot &tracked : m_plots) {
        if (!tracked.plot)
            continue;
        const PlotReading reading = readingOf(*tracked.plot, value);
        readings.positions.append(reading.position);
        readings.values.append(reading.value);
        readings.texts.append(reading.text);
    }
    return readings;
}

bool TrackedPlots::readAgain(const QObject *changed, double value, PlotReadings *readings) const
{
    const auto isBehind = [changed](const TrackedPlot &tracked) {
        return tracked.plot && (tracked.plot == changed || tracked.plot->plotData() == changed);
    };
    const auto isThere = [](const TrackedPlot &tracked) { return !tracked.plot.isNull(); };
    if (!changed || std::none_of(m_plots.begin(), m_plots.end(), isBehind) ||
        std::count_if(m_plots.begin(), m_plots.end(), isThere) != readings->values.size())
        return false;
    int i = 0;
    for (const TrackedPlot &tracked : m_plots) {
        if (isBehind(tracked) || (tracked.plot && !tracked.heard)) {
            const PlotReading reading = readingOf(*tracked.plot, value);
            put(readings->positions, i, reading.position);
            put(readings->values, i, reading.value);
            put(readings->texts, i, reading.text);
        }
        i += isThere(tracked);
    }
    return true;
}

} // namespace graph
