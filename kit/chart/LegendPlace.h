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
// be worse than one that covers some. Where there is no such place the legend leaves the area, and the room that it takes
// from that is no reason to come back: only other traces and another size of the chart are.
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

    struct Rooms
    {
        QSizeF chart;
        QSizeF area;
        QSizeF legend;

        bool operator==(const Rooms &other) const
        {
            return chart == other.chart && area == other.area && legend == other.legend;
        }
    };

    // Looks for the first corner that is free. False where that was done before, or while there are no data.
    bool find(const QVector<QPointer<AbstractPlot>> &plots, const Rooms &rooms);
    // The one that was found; none where all are taken.
    std::optional<Corner> corner() const { return m_corner; }

signals:
    // Data have not changed for a while.
    void due();

private:
    bool isNew(const QVector<const void *> &data, const Rooms &rooms);

    QTimer m_settling;
    bool m_hasSettled = false;
    bool m_isDue = false;
    QVector<const void *> m_data;
    Rooms m_rooms;
    std::optional<Corner> m_corner;
};

} // namespace graph
