#pragma once

#include "common/Export.h"
#include "kit/chart/Backdrop.h"
#include "kit/chart/ChartExport.h"
#include "kit/chart/PartColors.h"
#include "kit/chart/ReadingTexts.h"
#include "kit/chart/TraceColors.h"
#include "view/frame/GraphView.h"

#include <QSet>
#include <QVariant>

#include <memory>

class QPainter;

Q_MOC_INCLUDE("kit/axis/ChartAxis.h")
Q_MOC_INCLUDE("kit/chart/ChartTexts.h")
Q_MOC_INCLUDE("kit/chart/ChartTheme.h")
Q_MOC_INCLUDE("kit/chart/CursorSwitches.h")
Q_MOC_INCLUDE("kit/chart/LegendSwitches.h")
Q_MOC_INCLUDE("kit/chart/ZoomSwitches.h")

namespace graph {

class ChartAxes;
class ChartAxis;
class ChartLegend;
class ChartPlots;
class ChartRoom;
class ChartTexts;
class ChartTheme;
class ChartZoom;
class CursorSwitches;
class LegendSwitches;
class ThemeChoice;
class ZoomSwitches;

// A chart that needs nothing but traces: it brings together its axes, its plots, which may come and go at any time, and
// what of them is shown, and gives them their colours and their room. What the user touches is in Chart.qml.
class GRAPH_CHARTS_EXPORT ChartView : public GraphView, public BackdropSource
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
    // For Chart.qml: the layers below and above the traces, texts for bindings, whether a finger is at work that keeps
    // ranges still, and how large the legend is without values.
    Q_PROPERTY(QQuickItem *underlay READ underlay CONSTANT)
    Q_PROPERTY(QQuickItem *overlay READ overlay CONSTANT)
    Q_PROPERTY(graph::ChartTexts *bindingTexts READ bindingTexts CONSTANT)
    Q_PROPERTY(bool touched READ isTouched WRITE setTouched NOTIFY touchedChanged)
    Q_PROPERTY(QSizeF legendSize READ legendSize WRITE setLegendSize NOTIFY legendSizeChanged)
    Q_PROPERTY(QQuickItem *legendBox READ legendBox WRITE setLegendBox NOTIFY legendBoxChanged)
    Q_PROPERTY(QQuickItem *legendRow READ legendRow WRITE setLegendRow NOTIFY legendRowChanged)
    Q_PROPERTY(bool titleShown READ isTitleShown NOTIFY titleShownChanged)
    Q_PROPERTY(QQuickItem *flickable READ flickable WRITE setFlickable NOTIFY flickableChanged)

public:
    enum Theme : int { Dark, Light };
    Q_ENUM(Theme)

    explicit ChartView(QQuickItem *parent = nullptr);
    ~ChartView() override;

    QString title() const { return m_title; }
    QVariant theme() const;
    ChartTheme *colors() const;
    ChartAxis *axisX() const { return m_axisX; }
    ChartAxis *axisY() const { return m_axisY; }
    LegendSwitches *legend() const { return m_legend; }
    CursorSwitches *cursor() const { return m_cursor; }
    ZoomSwitches *zoom() const { return m_zoomSwitches; }
    QVariantList traces() const;
    double follow() const;
    bool isFollowing() const;
    ChartView *zoomWith() const;
    double exportProgress() const { return m_export->progress(); }
    bool canGoBack() const;
    bool canGoForward() const;
    QQuickItem *underlay() const { return m_underlay; }
    QQuickItem *overlay() const { return m_overlay; }
    ChartTexts *bindingTexts() const { return m_bindingTexts; }
    bool isTouched() const;
    QSizeF legendSize() const;
    // What of the legend is painted; null without one. For what keeps clear of it.
    QQuickItem *legendBox() const { return m_legendBox; }
    // The same where it is not in the plot area but above it.
    bool isTitleShown() const { return m_isTitleShown; }
    QQuickItem *legendRow() const { return m_legendRow; }
    QQuickItem *flickable() const { return m_flickable; }

    void setTitle(const QString &title);
    void setTheme(const QVariant &theme);
    void setFollow(double seconds);
    void setFollowing(bool following);
    void setZoomWith(ChartView *other);
    void setTouched(bool touched);
    void setLegendSize(const QSizeF &size);
    void setLegendBox(QQuickItem *box);
    void setLegendRow(QQuickItem *row);
    void setFlickable(QQuickItem *flickable);

    // Numbers, for programs that call it by name; documents can give dates.
    Q_INVOKABLE void showRange(double from, double to);
    Q_INVOKABLE void showRangeY(double from, double to);
    Q_INVOKABLE void showRange(const QVariant &from, const QVariant &to);
    Q_INVOKABLE void showRangeY(const QVariant &from, const QVariant &to);
    Q_INVOKABLE void showAll();
    // Of one direction.
    Q_INVOKABLE void showAllOf(Qt::Orientation orientation);
    Q_INVOKABLE void back();
    Q_INVOKABLE void forward();
    // What was zoomed until now is a step, and what comes next another one.
    Q_INVOKABLE void recordStep();
    Q_INVOKABLE bool exportImage(const QString &file, double scale = 1.0)
    {
        return m_export->exportImage(file, scale);
    }
    Q_INVOKABLE bool exportData(const QString &file, bool all = false)
    {
        return m_export->exportData(file, all);
    }
    Q_INVOKABLE void cancelExport() { m_export->cancel(); }
    // By a hand on the axes at a side; depth: pixels away from the plot area, place: fraction of what is
    // visible.
    Q_INVOKABLE void zoomBeside(int side, double depth, double place, double factor);
    Q_INVOKABLE void panBeside(int side, double depth, double distance);
    Q_INVOKABLE bool canPanBeside(int side, double depth) const;
    Q_INVOKABLE QString formatX(double value) const;
    Q_INVOKABLE QString formatY(QQuickItem *trace, double value) const;
    Q_INVOKABLE QString formatDifferenceY(QQuickItem *trace, double difference) const;
    // Those that have come since the last turn of the event loop, which was long ago in a busy process, are taken, and
    // ranges are fitted to their data.
    void takePlots();
    // Paints the chart as it is now into the rectangle, as large as its proportions allow: lines and texts, not pixels,
    // on a page. False, with a line in the log, where it cannot.
    bool paint(QPainter *painter, const QRectF &target);
    // Between a cursor and a marker on any axis.
    QString distanceText(const ValueAxis *axis, double distance) const;
    Backdrop backdrop() const override;

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
    void legendBoxChanged();
    void legendRowChanged();
    void titleShownChanged();
    void flickableChanged();

protected:
    void componentComplete() override;
    void itemChange(ItemChange change, const ItemChangeData &data) override;
    void adoptChild(QQuickItem *child) override;
    QMargins reservedMargins() const override;
    bool isRead(const AbstractPlot &plot) const override;
    QSGNode *updatePaintNode(QSGNode *node, UpdatePaintNodeData *data) override;

private:
    void hear();
    void wire();
    void adoptNewChildren();
    void letGo(AbstractPlot *plot);
    void dropPlot(AbstractPlot *plot);
    void applyColors();
    void dressCursors();
    void finishUpdate();
    void makeRoom();
    void makeOwnRoom();
    void chooseRows();
    void handleAreaChanged();
    QList<ChartView *> partners() const;
    void shareCursor();

    QString m_title;
    ChartAxis *m_axisX;
    ChartAxis *m_axisY;
    LegendSwitches *m_legend;
    CursorSwitches *m_cursor;
    ZoomSwitches *m_zoomSwitches;
    QSet<QQuickItem *> m_children; // the adopted ones
    TraceColors m_traceColors;
    PartColors m_partColors;
    ReadingTexts m_texts;
    QPointer<QQuickItem> m_legendBox;
    QPointer<QQuickItem> m_legendRow;
    QPointer<QQuickItem> m_flickable;
    bool m_isComplete = false;
    bool m_isTitleShown = false;
    bool m_isToldOfCursor = false;
    // The chart hears of these children while it is being made: what it then looks at is above.
    std::unique_ptr<ThemeChoice> m_theme;
    XYScale *m_grid;
    XYScale *m_labels;
    QQuickItem *m_underlay;
    QQuickItem *m_overlay;
    ChartTexts *m_bindingTexts;
    ChartExport *m_export;
    std::unique_ptr<ChartAxes> m_axes;
    std::unique_ptr<ChartRoom> m_room;
    std::unique_ptr<ChartPlots> m_plots;
    std::unique_ptr<ChartZoom> m_zoom;
    std::unique_ptr<ChartLegend> m_legendPlace;
    // Receives what the chart hears: it dies first, so that nothing reaches half an object.
    std::unique_ptr<QObject> m_ears = std::make_unique<QObject>();
};

} // namespace graph
