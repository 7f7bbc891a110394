#include "kit/chart/CsvTable.h"

#include "axis/ValueAxis.h"
#include "data/PlotData.h"
#include "kit/axis/AxisUnit.h"
#include "kit/axis/ChartAxis.h"
#include "kit/chart/DataChecks.h"
#include "kit/chart/ExportJob.h"
#include "kit/chart/ViewContents.h"
#include "kit/plots/LimitLine.h"
#include "kit/plots/PlotUnits.h"
#include "view/base/AbstractPlot.h"
#include "view/frame/GraphView.h"
#include "view/frame/WorldPlot.h"

#include <QDateTime>
#include <QIODevice>
#include <QLocale>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace graph {

namespace {

constexpr int blockSize = 1 << 16;
// Numbers from there to here have no exponent.
constexpr double leastPlain = 1e-4;
constexpr double endOfPlain = 1e15;
// The years that have four digits everywhere on earth, in seconds since 1970.
constexpr double earliestDate = -62135510400.0;
constexpr double endOfDates = 253402214400.0;
constexpr int mostDecimals = 12; // of a second

bool isSameX(const SampleSpan &a, const SampleSpan &b)
{
    if (a.size() != b.size())
        return false;
    for (int i = 0; i < a.size(); ++i) {
        if (a.x(i) != b.x(i))
            return false;
    }
    return true;
}

// As CSV wants it.
QByteArray field(const QString &text)
{
    static const QString special = QStringLiteral(",\"\r\n");
    const bool isPlain = std::none_of(text.begin(), text.end(), [](QChar c) { return special.contains(c); });
    QString quoted = text;
    return (isPlain ? text
                    : QLatin1Char('"') + quoted.replace(QLatin1Char('"'), QLatin1String("\"\"")) +
                          QLatin1Char('"'))
        .toUtf8();
}

// "2023-11-14T23:13:20.250Z", and with "+01:00" in local time: with all digits that the number of seconds has. Empty for
// times that have no year of four digits.
QByteArray dateText(double seconds, Qt::TimeSpec spec)
{
    const double whole = std::floor(seconds);
    if (!(whole >= earliestDate && whole < endOfDates))
        return {};
    const QByteArray digits = QByteArray::number(seconds, 'f', QLocale::FloatingPointShortest);
    const int point = digits.indexOf('.');
    QByteArray fraction;
    if (point >= 0) {
        const int decimals = qBound(3, digits.size() - point - 1, mostDecimals);
        fraction = QByteArray::number(seconds - whole, 'f', decimals);
    }
    // What a rounded fraction makes of the last second of before 1970.
    const bool isNext = fraction.startsWith('1');
    QDateTime time = QDateTime::fromSecsSinceEpoch(qint64(whole) + int(isNext), spec);
    if (spec == Qt::LocalTime)
        time = time.toOffsetFromUtc(time.offsetFromUtc());
    QByteArray text = time.toString(Qt::ISODate).toLatin1();
    constexpr int lengthOfSeconds = 19;
    return text.insert(lengthOfSeconds, fraction.mid(1));
}

void appendNumber(QByteArray *text, double value)
{
    if (std::isnan(value))
        return;
    // The shortest digits that read back as the same number; neighbours are to look alike: 1700000000, 1700000010.
    const double magnitude = std::abs(value);
    const bool isPlain = value == 0.0 || (magnitude >= leastPlain && magnitude < endOfPlain);
    text->append(QByteArray::number(value, isPlain ? 'f' : 'g', QLocale::FloatingPointShortest));
}

QString withUnit(const QString &name, const QString &unit)
{
    return unit.isEmpty() ? name : QStringLiteral("%1 [%2]").arg(name, AxisUnit(unit).symbol());
}

QString firstOf(const QStringList &texts)
{
    for (const QString &text : texts) {
        if (!text.isEmpty())
            return text;
    }
    return {};
}

// A trace may have a name and a unit of its own.
QString nameOfTrace(const AbstractPlot &plot, int number)
{
    const PlotData &data = *plot.plotData();
    const QString name = firstOf({plot.property("name").toString(), data.label(), data.yLabel(),
                                  plot.objectName(), QStringLiteral("trace %1").arg(number)});
    return withUnit(name, firstOf({unitOfValues(plot), plot.axisY() ? plot.axisY()->unit() : QString()}));
}

SampleSpan samplesOf(const AbstractPlot &plot, bool all)
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    return all ? plot.plotData()->sampleSpan(-infinity, infinity)
               : plot.plotData()->sampleSpan(plot.minVisibleX(), plot.maxVisibleX());
}

} // namespace

CsvTable::Clock CsvTable::clockOf(const AbstractPlot &plot)
{
    const auto *axis = qobject_cast<const ChartAxis *>(plot.axisX());
    if (!axis || axis->scale() != ChartAxis::Time)
        return Clock::None;
    return axis->utc() ? Clock::Utc : Clock::Local;
}

// Dates have no unit.
QString CsvTable::nameOfX(const AbstractPlot &plot)
{
    const PlotData &data = *plot.plotData();
    const QString title = plot.axisX() ? plot.axisX()->property("title").toString().simplified() : QString();
    if (clockOf(plot) != Clock::None)
        return firstOf({data.xLabel(), title, QStringLiteral("Time")});
    return withUnit(firstOf({data.xLabel(), title, QStringLiteral("x")}),
                    firstOf({unitOfPositions(plot), plot.axisX() ? plot.axisX()->unit() : QString()}));
}

CsvTable::CsvTable(const GraphView &view, bool all)
{
    for (const AbstractPlot *plot : plotsOf(view)) {
        const PlotData *data = plot->plotData();
        if (!data || !hasSamples(*data) || !view.isAncestorOf(plot) ||
            qobject_cast<const WorldPlot *>(plot) || qobject_cast<const LimitLine *>(plot))
            continue;
        m_traces.append(
            {nameOfX(*plot), nameOfTrace(*plot, m_traces.size() + 1), samplesOf(*plot, all), clockOf(*plot)});
        m_rows = qMax(m_rows, m_traces.last().samples.size());
    }
}

QVector<CsvTable::Group> CsvTable::groups() const
{
    QVector<Group> groups;
    for (const Trace &trace : m_traces) {
        const auto found = std::find_if(groups.begin(), groups.end(), [&trace](const Group &group) {
            const Trace &first = *group.first();
            return first.xName == trace.xName && first.clock == trace.clock &&
                   isSameX(first.samples, trace.samples);
        });
        if (found == groups.end())
            groups.append(Group{&trace});
        else
            found->append(&trace);
    }
    return groups;
}

bool CsvTable::write(QIODevice *device, const std::function<bool(double)> &goOn) const
{
    const QVector<Group> grouped = groups();
    QByteArray text = header(grouped);
    text.reserve(2 * blockSize);
    for (int row = 0; row < m_rows; ++row) {
        appendRow(&text, row, grouped);
        if (text.size() < blockSize)
            continue;
        if (!writeAll(text, device) || !goOn(double(row) / m_rows))
            return false;
        text.resize(0);
    }
    return writeAll(text, device) && goOn(1.0);
}

QByteArray CsvTable::header(const QVector<Group> &groups)
{
    QByteArrayList fields;
    for (const Group &group : groups) {
        const Trace &first = *group.first();
        fields.append(
            field(groups.size() == 1 ? first.xName : first.name + QLatin1String(": ") + first.xName));
        for (const Trace *trace : group)
            fields.append(field(trace->name));
    }
    return fields.join(',') + '\n';
}

void CsvTable::appendX(QByteArray *text, double x, Clock clock)
{
    const QByteArray date =
        clock == Clock::None ? QByteArray() : dateText(x, clock == Clock::Utc ? Qt::UTC : Qt::LocalTime);
    if (date.isEmpty())
        appendNumber(text, x);
    else
        text->append(date);
}

void CsvTable::appendRow(QByteArray *text, int row, const QVector<Group> &groups)
{
    bool isFirst = true;
    for (const Group &group : groups) {
        if (!std::exchange(isFirst, false))
            text->append(',');
        if (row < group.first()->samples.size())
            appendX(text, group.first()->samples.x(row), group.first()->clock);
        for (const Trace *trace : group) {
            text->append(',');
            if (row < trace->samples.size())
                appendNumber(text, trace->samples.y(row));
        }
    }
    text->append('\n');
}

} // namespace graph
