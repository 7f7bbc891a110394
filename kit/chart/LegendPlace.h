#pragma once

#include "common/Export.h"

#include <QObject>
#include <QPointer>
#include <QSizeF>
#include <QTimer>
#include <QVector>

#include <optional>

class AbstractPlot;

namespace graph {

// Where in a plot area a legend covers no trace. It is looked for once for the same traces, area and legend, and once
// more when their first samples have all come, which may be in any number of parts: one that jumped while data come would
// be worse than one that covers some.
class GRAPH_CHARTS_EXPORT LegendPlace : public QObject
{
    Q_OBJECT

public:
    struct Corner
    {
        bool atRight;
        bool atBottom;
    };

    LegendPlace();

    // The first corner that is free, the upper right one where none is; nothing where it was looked for before, or
    // while there are no data.
    std::optional<Corner> find(const QVector<QPointer<AbstractPlot>> &plots, const QSizeF &area,
                               const QSizeF &legend);

signals:
    // Data have not changed for a while.
    void due();

private:
    bool isNew(const QVector<const void *> &data, const QSizeF &area, const QSizeF &legend);

    QTimer m_settling;
    bool m_hasSettled = false;
    bool m_isDue = false;
    QVector<const void *> m_data;
    QSizeF m_area;
    QSizeF m_legend;
};

} // namespace graph
