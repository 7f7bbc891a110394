#include "InstrumentService.h"

#include "common/SafeInteger.h"

#include <algorithm>
#include <cmath>

using simulation::SweptTrace;
using simulation::Trace;

namespace {

// Clients know it without its second t.
const QString firstKey = QStringLiteral("xFirsValue");

QString scalarName(const QString &prefix, const QString &key)
{
    return prefix + QLatin1Char('_') + key + QLatin1Char(':');
}

QString vectorName(const QString &prefix, const QString &key)
{
    return scalarName(prefix, key) + QLatin1String("doubleARRAY:");
}

} // namespace

InstrumentService::InstrumentService(std::unique_ptr<simulation::Instrument> instrument, QObject *parent)
    : QObject(parent)
    , m_instrument(std::move(instrument))
    , m_publisher(m_instrument->serviceName())
    , m_times(m_instrument->times())
{
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, &InstrumentService::advance);
}

bool InstrumentService::start(std::optional<quint64> held)
{
    for (const Trace &trace : m_instrument->traces())
        publishTrace(trace);
    publishSweep(held.value_or(0));
    if (!m_publisher.publish())
        return false;
    m_clock.start();
    if (!held)
        waitForNextSweep();
    return true;
}

void InstrumentService::advance()
{
    const quint64 due = m_times.sweepAt(double(m_clock.nsecsElapsed()) * 1e-9);
    if (due + 1 != m_next)
        publishSweep(due);
    waitForNextSweep();
}

void InstrumentService::waitForNextSweep()
{
    const double begin = m_times.beginOf(m_next);
    if (!std::isfinite(begin))
        return;
    // At least a millisecond, so that sweeps which take longer than their period leave room for other events.
    constexpr double longestWait = 3600e3;
    const double wait = std::ceil(begin * 1e3 - double(m_clock.nsecsElapsed()) * 1e-6);
    m_timer.start(graph::truncatedIndex(std::clamp(wait, 1.0, longestWait)));
}

void InstrumentService::publishTrace(const Trace &trace)
{
    const simulation::TraceDescription &description = trace.description;
    const auto publish = [this, &trace](const char *key, const QVariant &value) {
        m_publisher.setValue(scalarName(trace.prefix, QLatin1String(key)), value);
    };
    publish("xLabel", description.xLabel);
    publish("yLabel", description.yLabel);
    publish("xSigDigs", description.xSigDigs);
    publish("ySigDigs", description.ySigDigs);
    publish("xPrecision", description.xPrecision);
    publish("yPrecision", description.yPrecision);
    publish("xRangeBegin", description.xRangeBegin);
    publish("yRangeBegin", description.yRangeBegin);
    publish("xRangeEnd", description.xRangeEnd);
    publish("yRangeEnd", description.yRangeEnd);
    publish("xUnits", description.xUnits);
    publish("yUnits", description.yUnits);
    publish("label", description.label);
    if (description.equallySpaced) {
        m_publisher.setValue(scalarName(trace.prefix, firstKey), description.xFirst);
        publish("xIncrement", description.xIncrement);
        m_step = description.xIncrement;
    }
    for (const simulation::NamedList &list : trace.lists)
        m_publisher.setValue(scalarName(trace.prefix, list.key), list.names);
    for (const simulation::NamedVector &vector : trace.vectors)
        m_publisher.setVector(vectorName(trace.prefix, vector.key), vector.values);
}

void InstrumentService::publishSweep(quint64 number)
{
    const int capacity = m_instrument->capacity();
    // A recording that grows must not lose samples, except those that would be dropped anyway.
    quint64 sweep = capacity > 0 ? std::max(m_next, number - std::min(number, quint64(capacity))) : number;
    QVector<SweptTrace> traces = m_instrument->sweep(sweep);
    const int samples = traces.isEmpty() ? 0 : int(traces.first().y.size());
    while (sweep < number) {
        const QVector<SweptTrace> next = m_instrument->sweep(++sweep);
        for (int i = 0; i < traces.size(); ++i)
            traces[i].y += next.at(i).y;
    }
    m_next = number + 1;
    const double dropped = std::max(0.0, double(m_next) * samples - capacity);
    for (const SweptTrace &trace : qAsConst(traces)) {
        const QString item = vectorName(trace.prefix, QStringLiteral("yData"));
        if (capacity > 0) {
            m_publisher.append(item, trace.y, capacity);
            m_publisher.setValue(scalarName(trace.prefix, firstKey), dropped * m_step);
        } else {
            m_publisher.setVector(item, trace.y);
        }
    }
    // After all vectors: a client that sees the number has every trace of the sweep.
    for (const SweptTrace &trace : qAsConst(traces))
        m_publisher.setValue(scalarName(trace.prefix, QStringLiteral("sweep")), double(number));
    emit sweepPublished(number, traces);
}
