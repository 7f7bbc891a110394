#include "simulator/FibreReflectometer.h"

#include "simulator/NoiseSource.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace simulation {

namespace {

constexpr double range = 25000.0;
constexpr double slope = 0.19e-3; // dB/m
constexpr double launchLevel = -20.0;
constexpr double noiseLevel = -46.0;
constexpr double lowestLevel = -60.0;
constexpr double pulseLength = 10.2; // m of fibre that a pulse of 100 ns covers
// Backscatter of the fibre for this pulse: what a reflectance has to be compared with.
constexpr double backscatter = -60.0;
// The receiver recovers from a reflection quickly at first and then slowly.
constexpr double fastRecovery = 3.0; // m
constexpr double slowRecovery = 18.0;
constexpr double slowShare = 1e-3;

// Light passes the fibre both ways, so a level counts five to the decade of detected power.
double decibels(double power)
{
    return 5.0 * std::log10(power);
}

double power(double level)
{
    return std::pow(10.0, 0.2 * level);
}

// How much of the pulse has passed a place, 0 to 1.
double passed(double distance)
{
    return std::clamp(distance / pulseLength, 0.0, 1.0);
}

double reflected(double distance)
{
    if (distance < 0.0)
        return 0.0;
    if (distance <= pulseLength)
        return 1.0;
    const double after = distance - pulseLength;
    return (1.0 - slowShare) * std::exp(-after / fastRecovery) + slowShare * std::exp(-after / slowRecovery);
}

// Power of the reflection of an event relative to the backscatter before it.
double reflectionHeight(const FibreReflectometer::Event &event)
{
    return std::isnan(event.reflectance) ? 0.0 : std::pow(10.0, 0.1 * (event.reflectance - backscatter));
}

} // namespace

FibreReflectometer::FibreReflectometer(int samples, quint64 seed, double sweepsPerSecond)
    : m_samples(std::max(samples, 0))
    , m_seed(seed)
    , m_rate(sweepsPerSecond)
    , m_step(m_samples > 1 ? range / (m_samples - 1) : range)
    , m_powers(m_samples, 0.0)
{
    for (int i = 0; i < m_samples; ++i)
        m_powers[i] = power(launchLevel - slope * i * m_step);
    QVector<double> reflections(m_samples, 0.0);
    for (const Event &event : events()) {
        const double height = reflectionHeight(event) * power(levelBefore(event.position));
        const double transmitted = power(-event.loss);
        for (int i = 0; i < m_samples; ++i) {
            const double distance = i * m_step - event.position;
            m_powers[i] *= 1.0 - passed(distance) * (1.0 - transmitted);
            reflections[i] += height * reflected(distance);
        }
    }
    for (int i = 0; i < m_samples; ++i)
        m_powers[i] += reflections.at(i);
}

QString FibreReflectometer::serviceName() const
{
    return QStringLiteral("otdr");
}

QVector<Trace> FibreReflectometer::traces() const
{
    TraceDescription description;
    description.label = QStringLiteral("Fibre");
    description.xLabel = QStringLiteral("Distance");
    description.yLabel = QStringLiteral("Level");
    description.xUnits = QStringLiteral("m");
    description.yUnits = QStringLiteral("dB");
    description.xRangeEnd = range;
    description.yRangeBegin = lowestLevel;
    description.equallySpaced = true;
    description.xIncrement = m_step;
    return {{QStringLiteral("trace"), description, {}, {}}, eventTable()};
}

QVector<SweptTrace> FibreReflectometer::sweep(quint64 number) const
{
    return {{QStringLiteral("trace"), levels(number)}};
}

SweepTimes FibreReflectometer::times() const
{
    return SweepTimes::atRate(m_rate);
}

QVector<double> FibreReflectometer::levels(quint64 sweep) const
{
    NoiseSource noise(m_seed, sweep, 0);
    const double deviation = power(noiseLevel);
    QVector<double> levels(m_samples);
    for (int i = 0; i < m_samples; ++i) {
        // Averaging leaves noise of either sign; what falls below the scale is cut off at its lower end.
        const double sample = m_powers.at(i) + deviation * noise.gaussian();
        levels[i] = sample > 0.0 ? std::max(decibels(sample), lowestLevel) : lowestLevel;
    }
    return levels;
}

QVector<FibreReflectometer::Event> FibreReflectometer::events()
{
    const double none = std::numeric_limits<double>::quiet_NaN();
    return {{0.0, 0.0, -42.0, "launch", "Launch"},
            {1012.0, 0.35, -48.0, "connector", "Connector"},
            {4180.0, 0.08, none, "splice", "Splice"},
            {7355.0, 0.12, none, "splice", "Splice"},
            {7391.0, 0.62, none, "bend", "Bend"},
            {10540.0, 0.05, none, "splice", "Splice"},
            {12870.0, 0.48, -45.0, "connector", "Connector"},
            {12931.0, 0.30, -51.0, "connector", "Connector"},
            {16020.0, -0.06, none, "splice", "Gain splice"},
            {18705.0, 0.15, none, "splice", "Splice"},
            {20264.0, 40.0, -14.7, "end", "Fibre end"}};
}

double FibreReflectometer::levelBefore(double distance)
{
    double level = launchLevel - slope * distance;
    for (const Event &event : events()) {
        if (event.position < distance)
            level -= event.loss;
    }
    return level;
}

Trace FibreReflectometer::eventTable() const
{
    Trace table;
    table.prefix = QStringLiteral("events");
    table.description = {};
    table.description.label = QStringLiteral("Events");
    table.description.xLabel = QStringLiteral("Distance");
    table.description.yLabel = QStringLiteral("Level");
    table.description.xUnits = QStringLiteral("m");
    table.description.yUnits = QStringLiteral("dB");
    table.description.xRangeEnd = range;
    table.description.yRangeBegin = lowestLevel;
    NamedVector x = {QStringLiteral("xData"), {}};
    NamedVector y = {QStringLiteral("yData"), {}};
    NamedVector loss = {QStringLiteral("loss"), {}};
    NamedVector reflectance = {QStringLiteral("reflectance"), {}};
    NamedList labels = {QStringLiteral("labels"), {}};
    NamedList icons = {QStringLiteral("icons"), {}};
    for (const Event &event : events()) {
        x.values.append(event.position);
        y.values.append(levelBefore(event.position));
        loss.values.append(event.loss);
        reflectance.values.append(event.reflectance);
        labels.names.append(QString::fromLatin1(event.name));
        icons.names.append(QString::fromLatin1(event.kind));
    }
    table.vectors = {x, y, loss, reflectance};
    table.lists = {labels, icons};
    return table;
}

} // namespace simulation
