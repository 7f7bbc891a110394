#pragma once

#include "kit/axis/AxisRows.h"
#include "kit/chart/FittedAxis.h"
#include "kit/chart/ZoomHistory.h"

#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <QSet>
#include <QTimer>
#include <QVector>

#include <vector>

class AbstractPlot;
class GraphView;
class ValueAxis;
class XYScale;
class ZoomRect;

namespace graph {

class ChartAxis;
class ChartTheme;

// The axes of a chart: the first two, which it has by itself, those that a document declares in it or in its plots,
// and those that plots bring along. Gives them planes, colours and names, and has their ranges fit the data.
class ChartAxes : public QObject
{
    Q_OBJECT

public:
    // What a chart knows when its axes are to fit their data.
    struct Look
    {
        const PlottedData &plotted;
        const ZoomState &shown; // of the first axes
        Span dataX;             // on the first horizontal axis, here and in charts that share it
        double reachX = 0.0;    // likewise, what is drawn around samples
        bool hasRoom = true;    // for data that go on growing
    };

    // The planes are for axes that have none of their own.
    ChartAxes(ChartAxis *x, ChartAxis *y, XYScale *grid, XYScale *labels, ZoomRect *zoom);

    ChartAxis *x() const { return m_x; }
    ChartAxis *y() const { return m_y; }
    QVector<ValueAxis *> all() const;

    // isOwn: it belongs to the chart, which draws it without a trace, too.
    void adopt(ValueAxis *axis, bool isOwn);
    // The axes in the view and in its plots, as they are now.
    void gather(const GraphView &view);
    // Gives the plot the first axes where it has none, and tells why one of its own did not do.
    void giveTo(AbstractPlot *plot) const;
    // From one that leaves the chart: another one gives it others.
    void takeFrom(AbstractPlot *plot) const;
    // The planes listen to none of them any more, at the end of the chart.
    void leavePlots();

    void setTheme(const ChartTheme &theme);
    void setGridVisible(bool visible);
    // What the document does not say of them follows from their traces. size: of the chart, as a small one needs the
    // room.
    void nameAfter(const QVector<QPointer<AbstractPlot>> &traces, const QSizeF &size);
    // Whether a unit is above the numbers of an axis.
    bool hasUnitAbove(AxisRows rows) const;
    // Of the axes at that side, with these rows of text.
    int heightBeside(Qt::Alignment side, AxisRows rows) const;
    bool hasVisible() const;
    // Those that the chart has room for, and whether there is any for units above. One horizontal axis keeps its numbers.
    void setRows(AxisRows rows, bool hasRoomAbove);

    void fit(Qt::Orientation orientation, const Look &look);
    void fit(FittedAxis &axis, const Look &look);
    // The same under a moving finger.
    void fitWhileMoved(const Look &look);
    // While it is true, changes of ranges are the chart's own doing, and nothing that a document writes. Gives what it was.
    bool setFitting(bool fitting);
    bool isFitting() const { return m_isFitting; }
    void leaveToData(Qt::Orientations orientations);

    // The axis at that side, so many pixels away from the plot area; null for one of the first two, which the zoom
    // rectangle is for.
    FittedAxis *furtherBeside(int side, double depth);

signals:
    // Or what it follows from, by a document.
    void rangeWritten();
    void roomChanged();
    // Ranges will be other ones now, without a change of the data.
    void fitDue();
    void axisDestroyed();

private:
    FittedAxis *find(const ValueAxis *axis);
    FittedAxis::Look lookAt(const FittedAxis &axis, const Look &look) const;
    void takeRange(const ValueAxis *axis);
    void applyColors(ValueAxis *axis) const;
    void draw(const QList<AbstractPlot *> &plots);
    void chooseGrid(Qt::Orientation orientation, const QList<AbstractPlot *> &plots);
    const ValueAxis *firstHorizontal() const;
    AxisRows rowsOf(const ValueAxis *axis, AxisRows rows) const;
    bool isIdle(const ValueAxis *axis, const QList<AbstractPlot *> &plots) const;

    ChartAxis *m_x;
    ChartAxis *m_y;
    XYScale *m_grid;
    XYScale *m_labels;
    ZoomRect *m_zoom;
    QPointer<const ChartTheme> m_theme;
    std::vector<FittedAxis> m_axes;
    // Those that have the grid only while the first axis of their direction is idle: a second grid between the lines of
    // the first could not be read.
    QSet<const ValueAxis *> m_gridless;
    AxisRows m_rows = AxisRows::All;
    bool m_hasRoomAbove = true;
    bool m_isIdleX = false;
    const void *m_first = nullptr; // that keeps its numbers; only its address is used
    QElapsedTimer m_clock;
    QTimer m_fitTimer;
    bool m_isFitting = false;
};

} // namespace graph
