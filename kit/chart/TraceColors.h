#pragma once

#include <QColor>
#include <QHash>
#include <QPointer>
#include <QVector>

class AbstractPlot;

namespace graph {

class ChartTheme;

// The colours that a chart gives to its traces. A trace that goes leaves its place to the next one that comes: none
// changes its colour because of another one.
class TraceColors
{
public:
    void give(const QVector<QPointer<AbstractPlot>> &traces, const ChartTheme &theme);
    // The plot may be destroyed: only its address is used.
    void forget(const AbstractPlot *plot) { m_given.remove(plot); }

private:
    struct Given
    {
        int place = -1;
        QColor color;
    };

    bool isChoiceOfChart(const AbstractPlot *plot) const;
    int freePlace() const;

    QHash<const AbstractPlot *, Given> m_given;
};

} // namespace graph
