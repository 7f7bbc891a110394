#pragma once

#include "kit/chart/PlacedScales.h"

#include <QMargins>
#include <QObject>

class GraphView;
class XYScale;

namespace graph {

class ChartAxes;
class ChartTheme;

// The room around the plot area of a chart: for its title, for units and the halves of numbers, and for the colour
// scales beside it, which it places.
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

    // Besides that of the axes.
    QMargins own() const;
    // Whether rows of text beside the plot area leave it hardly any height.
    bool isCramped() const;
    QMargins ofAxes() const;

    void placeScales() const;

signals:
    void changed();

private:
    const GraphView *m_chart;
    const ChartAxes *m_axes;
    const XYScale *m_labels;
    PlacedScales m_scales;
    int m_fontSize = 0;
    bool m_isTitled = false;
};

} // namespace graph
