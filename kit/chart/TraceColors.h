#pragma once

#include <QColor>
#include <QHash>
#include <QPointer>
#include <QSet>
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
    void forget(const AbstractPlot *plot);

private:
    struct Given
    {
        int place = -1;
        QColor color;
    };

    bool isChoiceOfChart(const AbstractPlot *plot) const;
    int takePlace();

    QHash<const AbstractPlot *, Given> m_given;
    QSet<int> m_taken;
    int m_firstFree = 0; // or before the first one
};

} // namespace graph
