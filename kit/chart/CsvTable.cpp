#include "kit/chart/CsvTable.h"

#include "axis/ValueAxis.h"
#include "data/PlotData.h"
#include "kit/axis/AxisUnit.h"
#include "kit/chart/DataChecks.h"
#include "kit/chart/ExportJob.h"
#include "kit/chart/ViewContents.h"
#include "kit/plots/LimitLine.h"
#include "kit/plots/PlotUnits.h"
#include "view/base/AbstractPlot.h"
#include "view/frame/GraphView.h"
#include "view/frame/WorldPlot.h"

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

QString nameOfX(const AbstractPlot &plot)
{
    const PlotData &data = *plot.plotData();
    const QString title = plot.axisX() ? plot.axisX()->property("title").toString() : QString();
    return withUnit(firstOf({data.xLabel(), title, QStringLiteral("x")}),
                    firstOf({unitOfPositions(plot), plot.axisX() ? plot.axisX()->unit() : QString()}));
}

SampleSpan samplesOf(const AbstractPlot &plot, bool all)
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    return all ? plot.plotData()->sampleSpan(-infinity, infinity)
               : plot.plotData()->sampleSpan(plot.minVisibleX(), plot.maxVisibleX());
}

} // namespace

CsvTable::CsvTable(const GraphView &view, bool all)
{
    for (const AbstractPlot *plot : plotsOf(view)) {
        const PlotData *data = plot->plotData();
        if (!data || !hasSamples(*data) || !view.isAncestorOf(plot) ||
            qobject_cast<const WorldPlot *>(plot) || qobject_cast<const LimitLine *>(plot))
            continue;
        m_traces.append({nameOfX(*plot), nameOfTrace(*plot, m_traces.size() + 1), samplesOf(*plot, all)});
        m_rows = qMax(m_rows, m_traces.last().samples.size());
    }
}

QVector<CsvTable::Group> CsvTable::groups() const
{
    QVector<Group> groups;
    for (const Trace &trace : m_traces) {
        const auto found = std::find_if(groups.begin(), groups.end(), [&trace](const Group &group) {
            return group.first()->xName == trace.xName && isSameX(group.first()->samples, trace.samples);
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

void CsvTable::appendRow(QByteArray *text, int row, const QVector<Group> &groups)
{
    bool isFirst = true;
    for (const Group &group : groups) {
        if (!std::exchange(isFirst, false))
            text->append(',');
        if (row < group.first()->samples.size())
            appendNumber(text, group.first()->samples.x(row));
        for (const Trace *trace : group) {
            text->append(',');
            if (row < trace->samples.size())
                appendNumber(text, trace->samples.y(row));
        }
    }
    text->append('\n');
}

} // namespace graph
