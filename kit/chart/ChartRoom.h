#pragma once

#include "kit/axis/AxisRows.h"
#include "kit/chart/PlacedScales.h"

#include <QMargins>
#include <QObject>
#include <QPointer>

class GraphView;
class XYScale;

namespace graph {

class ChartAxes;
class ChartTheme;

// The room around the plot area of a chart: for its title, for units and the halves of numbers, and for the colour
// scales and the row of names beside it, which it places.
class ChartRoom : public QObject
{
    Q_OBJECT

public:
    // The plane has the room that its axes need.
    ChartRoom(const GraphView *chart, const ChartAxes *axes, const XYScale *labels);

    void setTitled(bool titled) { m_isTitled = titled; }
    void setTheme(const ChartTheme &theme);
    // Whether the child of the chart is a scale to be placed.
    bool takeScale(QQuickItem *child, const ChartTheme &theme);
    // The item may be in destruction, no more than a QQuickItem.
    void forgetScale(const QQuickItem *child) { m_scales.forget(child); }

    // The names of traces above the plot area; null for none.
    void setLegendRow(QQuickItem *row);

    // Besides that of the axes.
    QMargins own() const;
    // Those beside the plot area that leave it a good part of the height. Without axes' titles there is none of the chart.
    AxisRows rows() const;
    bool hasRoomForUnits() const;
    bool hasTitle() const { return m_isTitled && rows() < AxisRows::WithoutTitles; }
    QMargins ofAxes() const;

    void placeParts() const;

signals:
    void changed();

private:
    int topWith(AxisRows rows) const;
    int legendLift(AxisRows rows) const;

    const GraphView *m_chart;
    const ChartAxes *m_axes;
    const XYScale *m_labels;
    PlacedScales m_scales;
    QPointer<QQuickItem> m_legendRow;
    int m_fontSize = 0;
    bool m_isTitled = false;
};

} // namespace graph
