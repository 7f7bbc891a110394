#pragma once

#include "common/Export.h"
#include "kit/chart/Backdrop.h"
#include "kit/chart/FittedAxis.h"
#include "kit/chart/LeastPositive.h"
#include "kit/chart/LegendPlace.h"
#include "kit/chart/PlacedScales.h"
#include "kit/chart/ReadingTexts.h"
#include "kit/chart/TraceColors.h"
#include "kit/chart/ZoomHistory.h"
#include "view/frame/GraphView.h"

#include <QElapsedTimer>
#include <QSet>
#include <QTimer>
#include <QVariant>

#include <memory>
#include <vector>

Q_MOC_INCLUDE("kit/axis/ChartAxis.h")
Q_MOC_INCLUDE("kit/chart/ChartTheme.h")
Q_MOC_INCLUDE("kit/chart/CursorSwitches.h")
Q_MOC_INCLUDE("kit/chart/LegendSwitches.h")
Q_MOC_INCLUDE("kit/chart/ZoomSwitches.h")

namespace graph {

class ChartAxis;
class ChartExport;
class ChartTheme;
class CursorSwitches;
class LegendSwitches;
class ZoomSwitches;

// A chart that needs nothing but traces: it has axes, planes and colours, wires traces whenever they come and
// go, and keeps its ranges and the history of its zooms. What the user touches is in Chart.qml.
class GRAPH_CHARTS_EXPORT ChartView : public GraphView, public Backdrop
{
    Q_OBJECT
    Q_PROPERTY(QString title READ title WRITE setTitle NOTIFY titleChanged)
    Q_PROPERTY(QVariant theme READ theme WRITE setTheme NOTIFY themeChanged)
    Q_PROPERTY(graph::ChartTheme *colors READ colors NOTIFY colorsChanged)
    Q_PROPERTY(graph::ChartAxis *axisX READ axisX CONSTANT)
    Q_PROPERTY(graph::ChartAxis *axisY READ axisY CONSTANT)
    Q_PROPERTY(graph::LegendSwitches *legend READ legend CONSTANT)
    Q_PROPERTY(graph::CursorSwitches *cursor READ cursor CONSTANT)
    Q_PROPERTY(graph::ZoomSwitches *zoom READ zoom CONSTANT)
    Q_PROPERTY(QVariantList traces READ traces NOTIFY tracesChanged)
    Q_PROPERTY(QQuickItem *plotArea READ plotArea CONSTANT)
    Q_PROPERTY(double follow READ follow WRITE setFollow NOTIFY followChanged)
    Q_PROPERTY(bool following READ isFollowing WRITE setFollowing NOTIFY followingChanged)
    Q_PROPERTY(graph::ChartView *zoomWith READ zoomWith WRITE setZoomWith NOTIFY zoomWithChanged)
    Q_PROPERTY(double exportProgress READ exportProgress NOTIFY exportProgressChanged)
    Q_PROPERTY(bool canGoBack READ canGoBack NOTIFY historyChanged)
    Q_PROPERTY(bool canGoForward READ canGoForward NOTIFY historyChanged)
    // For Chart.qml: the layers below and above the traces, whether a finger is at work that keeps ranges still, and
    // how large the legend is without values.
    Q_PROPERTY(QQuickItem *underlay READ underlay CONSTANT)
    Q_PROPERTY(QQuickItem *overlay READ overlay CONSTANT)
    Q_PROPERTY(bool touched READ isTouched WRITE setTouched NOTIFY touchedChanged)
    Q_PROPERTY(QSizeF legendSize READ legendSize WRITE setLegendSize NOTIFY legendSizeChanged)
    Q_PROPERTY(QQuickItem *flickable READ flickable WRITE setFlickable NOTIFY flickableChanged)

public:
    enum Theme : int { Dark, Light };
    Q_ENUM(Theme)

    explicit ChartView(QQuickItem *parent = nullptr);
    ~ChartView() override;

    QString title() const { return m_title; }
    QVariant theme() const { return m_theme; }
    ChartTheme *colors() const;
    ChartAxis *axisX() const { return m_axisX; }
    ChartAxis *axisY() const { return m_axisY; }
    LegendSwitches *legend() const { return m_legend; }
    CursorSwitches *cursor() const { return m_cursorSwitches; }
    ZoomSwitches *zoom() const { return m_zoom; }
    QVariantList traces() const;
    double follow() const { return m_follow; }
    bool isFollowing() const { return m_shown.following; }
    ChartView *zoomWith() const { return m_zoomWith; }
    double exportProgress() const;
    bool canGoBack() const { return m_history.canGoBack() || hasUnrecordedStep(); }
    bool canGoForward() const { return m_history.canGoForward() && !hasUnrecordedStep(); }
    QQuickItem *underlay() const { return m_underlay; }
    QQuickItem *overlay() const { return m_overlay; }
    bool isTouched() const { return m_touched; }
    QSizeF legendSize() const { return m_legendSize; }
    QQuickItem *flickable() const { return m_flickable; }

    void setTitle(const QString &title);
    void setTheme(const QVariant &theme);
    void setFollow(double seconds);
    void setFollowing(bool following);
    void setZoomWith(ChartView *other);
    void setTouched(bool touched);
    void setLegendSize(const QSizeF &size);
    void setFlickable(QQuickItem *flickable);

    Q_INVOKABLE void showRange(double from, double to);
    Q_INVOKABLE void showRangeY(double from, double to);
    Q_INVOKABLE void showAll();
    // Of one direction.
    Q_INVOKABLE void showAllOf(Qt::Orientation orientation);
    Q_INVOKABLE void back();
    Q_INVOKABLE void forward();
    // What was zoomed until now is a step, and what comes next another one.
    Q_INVOKABLE void recordStep();
    Q_INVOKABLE bool exportImage(const QString &file, double scale = 1.0);
    Q_INVOKABLE bool exportData(const QString &file, bool all = false);
    Q_INVOKABLE void cancelExport();
    // By a hand on the axes at a side; depth: pixels away from the plot area, place: fraction of what is
    // visible.
    Q_INVOKABLE void zoomBeside(int side, double depth, double place, double factor);
    Q_INVOKABLE void panBeside(int side, double depth, double distance);
    void paintBackdrop(QPainter *painter) const override;
    Q_INVOKABLE QString formatX(double value) const;
    QString distanceText(const ValueAxis *axis, double distance) const;
    Q_INVOKABLE QString formatY(QQuickItem *trace, double value) const;

signals:
    void titleChanged();
    void themeChanged();
    void colorsChanged();
    void tracesChanged();
    void followChanged();
    void followingChanged();
    void zoomWithChanged();
    void historyChanged();
    void exportFinished(const QString &file, const QString &error);
    void exportProgressChanged();
    void touchedChanged();
    void legendSizeChanged();
    void flickableChanged();

protected:
    void componentComplete() override;
    void itemChange(ItemChange change, const ItemChangeData &data) override;
    void adoptChild(QQuickItem *child) override;
    QMargins reservedMargins() const override;
    QSGNode *updatePaintNode(QSGNode *node, UpdatePaintNodeData *data) override;

private slots:
    void wire();
    void takeTrace(int index, QObject *object);

private:
    // Wiring
    void wireLater();
    void adoptNewChildren();
    void gatherPlots(QQuickItem *item, int depth, QList<AbstractPlot *> &plots);
    void watchInstantiators();
    void adoptPlot(AbstractPlot *plot);
    void dropPlot(AbstractPlot *plot);
    void followData(AbstractPlot *plot);
    void gatherAxes();
    void adoptAxis(ValueAxis *axis, bool isOwn);
    void drawAsImage(QQuickItem *item);

    // Look
    bool adoptScale(QQuickItem *child);
    void makeRoom();
    void makeOwnRoom();
    QMargins ownMargins() const;
    void placeScales();
    void handleAreaChanged();
    void applyColors();
    void applyColors(ValueAxis *axis);
    void dressCursors();
    void placeCursors();

    // Ranges
    void updateRangesLater();
    void updateRanges();
    void nameAxes();
    void followNewData(const Span &oldX);
    void placeLegend();
    void fitAxes(Qt::Orientation orientation, const PlottedData &plotted);
    FittedAxis::Look lookAt(const FittedAxis &axis, const PlottedData &plotted) const;
    void fit(FittedAxis &axis, const PlottedData &plotted);
    void fitWhileMoved();
    Span groupSpanX() const;
    FittedAxis *stateOf(const ValueAxis *axis);
    FittedAxis *furtherAxis(int side, double depth);
    void moveAxis(FittedAxis &axis, double anchor, double factor, double distance);

    // Zoom
    void showState(const ZoomState &state, bool asStep);
    void handleRectChanged();
    bool hasUnrecordedStep() const { return !(m_shown == m_history.present()); }
    void tellPartners();
    void shareCursor();
    void leavePartners();
    QList<ChartView *> partners() const;
    double followedSeconds() const;
    void tellOfNoWindow();
    bool isRange(const char *method, double from, double to) const;
    Span awaitedSpan(double seconds) const;

    QString m_title;
    QVariant m_theme;
    ChartTheme *m_darkTheme;
    ChartTheme *m_lightTheme;
    QPointer<ChartTheme> m_colors;
    ChartAxis *m_axisX;
    ChartAxis *m_axisY;
    LegendSwitches *m_legend;
    LegendPlace m_legendPlace;
    QSizeF m_legendSize;
    CursorSwitches *m_cursorSwitches;
    ZoomSwitches *m_zoom;
    std::vector<FittedAxis> m_axes;
    QVector<QPointer<QObject>> m_instantiators;
    QVector<QPointer<QQuickItem>> m_children; // the adopted ones
    PlacedScales m_scales;
    QVector<QPointer<AbstractPlot>> m_traces;
    QSet<const QObject *> m_watched;
    TraceColors m_traceColors;
    ReadingTexts m_texts;
    QPointer<QQuickItem> m_flickable;
    LeastPositive m_leastPositive;
    Span m_dataX; // how far the data reaches on the first axis
    double m_follow = 0.0;
    QPointer<ChartView> m_zoomWith;
    QVector<QPointer<ChartView>> m_zoomedWithThis;
    ZoomState m_shown;
    ZoomHistory m_history;
    QTimer m_stepTimer;
    QTimer m_fitTimer;
    QElapsedTimer m_clock;
    // Receives what the chart hears: it dies first, so that nothing reaches half an object.
    std::unique_ptr<QObject> m_ears = std::make_unique<QObject>();
    bool m_complete = false;
    bool m_wirePending = false;
    bool m_rangesPending = false;
    bool m_applying = false;
    bool m_touched = false;
    bool m_isToldOfCursor = false;
    // Last: the chart hears of these children while it is being made.
    XYScale *m_grid;
    XYScale *m_labels;
    QQuickItem *m_underlay;
    QQuickItem *m_overlay;
    ChartExport *m_export;
};

} // namespace graph
