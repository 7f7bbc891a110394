#pragma once

#include "common/Export.h"

#include <QPointer>
#include <QSizeF>
#include <QVector>

#include <optional>

class AbstractPlot;

namespace graph {

// Where in a plot area a legend covers no trace. It is looked for once for the same traces, area and legend: one that
// jumped while data come would be worse than one that covers some.
class GRAPH_CHARTS_EXPORT LegendPlace
{
public:
    struct Corner
    {
        bool atRight;
        bool atBottom;
    };

    // The first corner that is free, the upper right one where none is; nothing where it was looked for before, or
    // while there are no data.
    std::optional<Corner> find(const QVector<QPointer<AbstractPlot>> &plots, const QSizeF &area,
                               const QSizeF &legend);

private:
    QVector<const void *> m_data;
    QSizeF m_area;
    QSizeF m_legend;
};

} // namespace graph
