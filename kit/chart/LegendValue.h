#pragma once

#include "common/Export.h"
#include "kit/chart/ChartView.h"
#include "kit/chart/EarlyItem.h"

#include <QPointer>

class AbstractPlot;
class GraphCursor;
class PlotData;
class ValueAxis;

Q_MOC_INCLUDE("cursors/GraphCursor.h")
Q_MOC_INCLUDE("data/PlotData.h")
Q_MOC_INCLUDE("view/base/AbstractPlot.h")

namespace graph {

// The value behind a name in Legend.qml. It is found when it is asked for, or before a frame, not with each of the things that
// a moved cursor or new data change.
class GRAPH_CHARTS_EXPORT LegendValue : public EarlyItem
{
    Q_OBJECT
    Q_PROPERTY(graph::ChartView *chart READ chart WRITE setChart NOTIFY sourceChanged)
    Q_PROPERTY(AbstractPlot *plot READ plot WRITE setPlot NOTIFY sourceChanged)
    Q_PROPERTY(GraphCursor *cursor READ cursor WRITE setCursor NOTIFY sourceChanged)
    // The value of the last sample while there is no cursor.
    Q_PROPERTY(bool newest READ isNewest WRITE setNewest NOTIFY sourceChanged)
    Q_PROPERTY(QQuickItem *label READ label WRITE setLabel NOTIFY sourceChanged)
    // The end of the label, and how wide values may get.
    Q_PROPERTY(double end READ end WRITE setEnd NOTIFY endChanged)
    Q_PROPERTY(double longest READ longest WRITE setLongest NOTIFY longestChanged)
    Q_PROPERTY(QString text READ text NOTIFY textChanged)
    // The widest that it has been.
    Q_PROPERTY(double room READ room NOTIFY roomChanged)

public:
    explicit LegendValue(QQuickItem *parent = nullptr);

    ChartView *chart() const { return m_chart; }
    AbstractPlot *plot() const;
    GraphCursor *cursor() const;
    bool isNewest() const { return m_isNewest; }
    QQuickItem *label() const { return m_label; }
    double end() const { return m_end; }
    double longest() const { return m_longest; }
    QString text() const;
    double room() const { return m_room; }

    void setChart(ChartView *chart);
    void setPlot(AbstractPlot *plot);
    void setCursor(GraphCursor *cursor);
    void setNewest(bool newest);
    void setLabel(QQuickItem *label);
    void setEnd(double end);
    void setLongest(double width);

signals:
    void sourceChanged();
    void endChanged();
    void longestChanged();
    void textChanged();
    void roomChanged();

protected:
    void prepare() override;

private:
    void invalidate();
    void followData();
    void followAxis();
    void placeLabel();
    void growTo(double width);
    QString found() const;

    QPointer<ChartView> m_chart;
    QPointer<AbstractPlot> m_plot;
    QPointer<PlotData> m_data;
    QPointer<ValueAxis> m_axis;
    QPointer<GraphCursor> m_cursor;
    QPointer<QQuickItem> m_label;
    bool m_isNewest = false;
    double m_end = 0.0;
    double m_longest = 0.0;
    double m_room = 0.0;
    mutable QString m_text;
    mutable bool m_isValid = true;
    QString m_told;
};

} // namespace graph
