#pragma once

#include "kit/chart/ChartAxes.h"
#include "kit/chart/Joined.h"
#include "kit/chart/LeastPositive.h"
#include "kit/chart/ZoomHistory.h"

#include <QObject>
#include <QTimer>

class GraphView;
class ZoomRect;

namespace graph {

class PlottedData;

// What of its axes a chart shows: their full ranges, which follow the data, the zooms and what led to them, and the
// window that rolls with live data. Charts that are joined show the same x.
class ChartZoom : public QObject
{
    Q_OBJECT

public:
    ChartZoom(GraphView *view, ChartAxes *axes);

    GraphView *view() const { return m_view; }
    double follow() const { return m_follow; }
    bool isFollowing() const { return m_shown.following; }
    bool canGoBack() const { return m_history.canGoBack() || hasUnrecordedStep(); }
    bool canGoForward() const { return m_history.canGoForward() && !hasUnrecordedStep(); }
    bool isTouched() const { return m_isTouched; }

    void setFollow(double seconds);
    void setFollowing(bool following);
    // Whether a finger is at work that keeps ranges still.
    void setTouched(bool touched);

    void showRange(double from, double to);
    void showRangeY(double from, double to);
    void showAll();
    void showAllOf(Qt::Orientation orientation);
    void back();
    void forward();
    // What was zoomed until now is a step, and what comes next another one.
    void recordStep();
    // By a hand on the axes at a side; depth: pixels away from the plot area, place: fraction of what is visible.
    void zoomBeside(int side, double depth, double place, double factor);
    void panBeside(int side, double depth, double distance);
    bool canPanBeside(int side, double depth) const;

    // The ones that this one is joined with, directly or through others.
    QList<ChartZoom *> partners() const { return m_joined.others(); }
    ChartZoom *with() const { return m_joined.with(); }
    void joinWith(ChartZoom *other);
    void leavePartners() { m_joined.leave(); }

    // The document is complete: from now on the chart shows what it says.
    void complete() { m_isComplete = true; }
    // What is shown now is the first step.
    void begin();
    void update();
    void updateLater();

    // Where the newest data are, as a fraction of what is visible; 0 without any.
    double newestPlace() const;

signals:
    void followChanged();
    void followingChanged();
    void historyChanged();
    void touchedChanged();
    // Before and after ranges are chosen.
    void aboutToUpdate();
    void updated();

private:
    ZoomRect *rect() const;
    void followNewData(const Span &oldX);
    ChartAxes::Look lookAt(const PlottedData &plotted) const;
    Span groupSpanX() const;
    double followedSeconds() const;
    void tellOfNoWindow();
    bool isRange(const char *method, const ChartAxis &axis, double from, double to) const;
    void showState(const ZoomState &state, bool asStep);
    void handleRectChanged();
    bool hasUnrecordedStep() const { return !(m_shown == m_history.present()); }
    bool moveBeside(int side, double depth, double anchor, double factor, double distance);
    void tellPartners();

    GraphView *m_view;
    ChartAxes *m_axes;
    Joined<ChartZoom> m_joined{this};
    ZoomState m_shown;
    ZoomHistory m_history;
    LeastPositive m_leastPositive;
    Span m_dataX;          // how far the data reaches on the first axis
    double m_reachX = 0.0; // what is drawn around samples, as a share of that axis
    double m_follow = 0.0;
    QTimer m_stepTimer;
    bool m_isComplete = false;
    bool m_isHeldFirst = false; // by the document, before a window is written
    bool m_isPending = false;
    bool m_isTouched = false;
};

} // namespace graph
