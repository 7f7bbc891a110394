#pragma once

#include "data/SampleSpan.h"

#include <QString>
#include <QVector>

#include <functional>

class AbstractPlot;
class GraphView;
class QIODevice;

namespace graph {

// The samples of a chart's traces as a table, which shares their arrays: it stays as it is while the chart
// goes on.
class CsvTable
{
public:
    // Of the visible plots, limits left out: they are no data. All their samples, or those in the visible range of x.
    CsvTable(const GraphView &view, bool all);

    bool isEmpty() const { return m_rows == 0; }

    // A line of names with units, then a line for each sample, with points in numbers and commas between them
    // in every locale. The x of a time axis is a date as ISO 8601 has it. Traces that have the same x share a
    // column of it; a gap is an empty field. goOn is told of the share done. False when it, or the device, wants no more.
    bool write(QIODevice *device, const std::function<bool(double)> &goOn) const;

private:
    // Whose times x is; without one it is a number.
    enum class Clock { None, Utc, Local };

    struct Trace
    {
        QString xName;
        QString name;
        SampleSpan samples;
        Clock clock;
    };

    // Traces beside a column of x that is theirs.
    using Group = QVector<const Trace *>;

    // A look at all samples, which is left to the writing thread.
    QVector<Group> groups() const;
    static Clock clockOf(const AbstractPlot &plot);
    static QString nameOfX(const AbstractPlot &plot);
    static void appendX(QByteArray *text, double x, Clock clock);
    static QByteArray header(const QVector<Group> &groups);
    static void appendRow(QByteArray *text, int row, const QVector<Group> &groups);

    QVector<Trace> m_traces;
    int m_rows = 0;
};

} // namespace graph
