#include "kit/plots/TraceSource.h"

#include "data/PlotSeries.h"
#include "kit/data/ServedPlace.h"
#include "kit/data/Store.h"
#include "kit/data/Telling.h"
#include "kit/plots/TracePoints.h"
#include "view/base/AbstractPlot.h"

#include <QEvent>

namespace graph {

TraceSource::TraceSource(AbstractPlot *plot)
    : m_plot(plot)
{
}

/*!
    \qmlproperty list<real> Trace::values
    The values: an array, a typed array, or a list property of a C++ object. What is no number leaves a gap;
    a text that is one, such as "1.5", counts as the number. Empty by default.
*/
bool TraceSource::setValues(const std::optional<QVector<double>> &values)
{
    if (!store(m_values, values))
        return false;
    apply();
    return true;
}

/*!
    \qmlproperty list<real> Trace::positions
    An x for each value, in any order, in place of start and interval; a list like values, or of dates, which
    count in seconds since the beginning of 1970. The shorter of the two lists counts. Undefined by default.
*/
bool TraceSource::setPositions(const std::optional<QVector<double>> &positions)
{
    if (!store(m_positions, positions))
        return false;
    apply();
    return true;
}

/*!
    \qmlproperty real Trace::interval
    The distance in x from one value to the next; 1 by default, negative ones run backwards. Of values, and of
    those of an address: these have what the service says (its item \c xIncrement) unless an interval is written.
*/
bool TraceSource::setInterval(double interval)
{
    const bool isFirst = !std::exchange(m_hasInterval, true);
    if (!store(m_interval, interval) && !isFirst)
        return false;
    apply();
    return true;
}

/*!
    \qmlproperty var Trace::start
    The x of the first value, a number or a date, of which it is the seconds since 1970; 0 by default. Of values, and of those of an address: these have what the service says
    (its item \c xFirsValue) unless a start is written.
*/
bool TraceSource::setStart(double start)
{
    const bool isFirst = !std::exchange(m_hasStart, true);
    if (!store(m_start, start) && !isFirst)
        return false;
    apply();
    return true;
}

/*!
    \qmlproperty PlotData Trace::series
    A data object of any kind, or another Trace or plot, whose data it then shows; null by default. What the data say of
    themselves, such as their units, stays as it is; only where they have no unit they take that of the trace.
*/
bool TraceSource::setSeries(PlotData *series)
{
    if (m_series == series)
        return false;
    if (m_series)
        disconnect(m_series, &QObject::destroyed, this, &TraceSource::apply);
    m_series = series;
    // Later than the plot's own connection, which lets go of the data that the plot has then.
    if (series)
        connect(series, &QObject::destroyed, this, &TraceSource::apply, Qt::QueuedConnection);
    apply();
    return true;
}

/*!
    \qmlproperty string Trace::address
    Where the values come from on the bus: the name of a service, a comma and the prefix of its items, as for
    PlotData::dbusAddress. The service also says where the values are in x, which units they have and what they are
    called, as far as the document does not: interval and start, unit, name. Empty by default.
*/
bool TraceSource::setAddress(const QString &address)
{
    m_hasAddress = true;
    if (m_address == address)
        return false;
    m_address = address;
    apply();
    return true;
}

/*!
    \qmlproperty string Trace::name
    What a legend and a reading call the trace; empty by default.
*/
bool TraceSource::setName(const QString &name)
{
    if (!store(m_name, name))
        return false;
    if (m_own)
        m_own->setLabel(name);
    return true;
}

/*!
    \qmlproperty string Trace::unit
    The unit of the values, such as "V"; empty by default, and then that of the service where there is an address.
*/
bool TraceSource::setUnit(const QString &unit)
{
    if (!store(m_unit, unit))
        return false;
    if (m_plot->plotData())
        describe(m_plot->plotData());
    return true;
}

void TraceSource::begin()
{
    m_isComplete = false;
}

void TraceSource::complete()
{
    m_isComplete = true;
    apply();
}

TraceSource::Kind TraceSource::kind() const
{
    if (m_series)
        return Kind::Series;
    if (!m_address.isEmpty())
        return Kind::Address;
    return m_values || m_positions ? Kind::Values : Kind::None;
}

void TraceSource::apply()
{
    if (!m_isComplete)
        return;
    warnOfTwoSources();
    switch (kind()) {
    case Kind::None:
        if (m_shown && m_plot->plotData() == m_shown)
            m_plot->setPlotData(nullptr);
        return;
    case Kind::Series:
        show(m_series);
        return;
    case Kind::Address:
        show(servedData());
        return;
    case Kind::Values:
        show(writtenData());
        return;
    }
}

void TraceSource::show(PlotData *data)
{
    const PlotData *present = m_plot->plotData();
    if (present && present != m_shown && present != data)
        tellOnce(m_plot, "plotData",
                 QStringLiteral("is given plotData beside series, address or values, and shows the latter: "
                                "write it as series, or remove one of the two"));
    describe(data);
    m_shown = data;
    m_plot->setPlotData(data);
}

void TraceSource::warnOfTwoSources()
{
    const int given = int(m_series != nullptr) + int(!m_address.isEmpty()) + int(m_values.has_value());
    if (given < 2 || m_hasWarned)
        return;
    m_hasWarned = true;
    const char *used = m_series ? "series" : "address";
    tell(m_plot, QStringLiteral(
                     "is given its data twice: of series, address and values it uses %1; remove the others")
                     .arg(QLatin1String(used)));
}

// The trace's own data object, of that kind and for that address: another one shows nothing of the former service. Axes
// that the former one was given go over to it.
template <typename Data> Data *TraceSource::ownData(const QString &address)
{
    auto *former = dynamic_cast<Data *>(m_own.data());
    if (former && former->busBinding().writtenAddress() == address)
        return former;
    auto *data = new Data(m_plot);
    if (m_own) {
        data->setAxisX(m_own->axisX());
        data->setAxisY(m_own->axisY());
        m_own->removeEventFilter(this);
        m_own->disconnect(this);
        m_own->deleteLater();
    }
    m_own = data;
    data->setLabel(m_name);
    if (!address.isEmpty()) {
        data->setDbusAddress(address);
        data->installEventFilter(this);
        connect(data, &PlotData::yUnitsChanged, this, [this] { describe(m_own); });
    }
    return data;
}

PlotData *TraceSource::writtenData()
{
    if (m_positions) {
        auto *points = ownData<TracePoints>();
        points->setCoordinates(*m_positions, values());
        return points;
    }
    auto *series = ownData<PlotSeries>();
    series->setYData(values());
    series->setXInterval(m_interval);
    series->setXFirstValue(m_start);
    return series;
}

PlotData *TraceSource::servedData()
{
    auto *series = ownData<PlotSeries>(m_address);
    series->setXInterval(m_hasInterval ? m_interval : servedInterval(*series, m_interval));
    series->setXFirstValue(m_hasStart ? m_start : servedStart(*series, m_start));
    return series;
}

// The service has said where its values are.
bool TraceSource::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_own && event->type() == QEvent::DynamicPropertyChange)
        apply();
    return QObject::eventFilter(watched, event);
}

// What the document writes counts, then what the data say of themselves.
void TraceSource::describe(PlotData *data)
{
    if (m_isDescribing || (data != m_own && !data->yUnits().isEmpty()))
        return;
    const QString served = data->busBinding().value(QStringLiteral("yUnits")).toString();
    m_isDescribing = true;
    data->setYUnits(m_unit.isEmpty() ? served : m_unit);
    m_isDescribing = false;
}

} // namespace graph
